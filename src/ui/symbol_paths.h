#pragma once

#include <string_view>
#include <vector>

#include <QtGui/qpainterpath.h>

namespace lunevra {

/// Every name that there is a symbol for.
[[nodiscard]] std::vector<std::string_view> symbolNames();

/// The side of the square that a symbol takes next to text of this size, in points.
[[nodiscard]] double symbolSide(double textSize);

/// The outline of a symbol, to be filled, with its top left at the origin; empty for a name that
/// there is none for. All are drawn on one grid of 24 units with strokes of one weight; straight
/// edges come to lie on whole pixels.
[[nodiscard]] QPainterPath symbolPath(std::string_view name, double textSize, double pixelRatio);

}  // namespace lunevra
