#pragma once

#include <QtGui/qpainterpath.h>

namespace lunevra {

enum class Symbol { moon, moonStars, moonZzz, lock, externalDrive };

/// The side of the square that a symbol takes next to text of this size, in points.
[[nodiscard]] double symbolSide(double textSize);

/// The outline of a symbol, to be filled, with its top left at the origin. All are drawn on one
/// grid of 24 units with strokes of one weight; straight edges come to lie on whole pixels.
[[nodiscard]] QPainterPath symbolPath(Symbol symbol, double textSize, double pixelRatio);

}  // namespace lunevra
