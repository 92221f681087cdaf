#pragma once

#include <QtGui/qbrush.h>
#include <QtGui/qcolor.h>
#include <QtGui/qimage.h>

namespace lunevra {

/// What a shape is made of: the brush that fills it, and a glow of its outline around it.
struct SoftFill {
  QBrush brush;  // in points, from the top left of the shape's picture
  QColor shadowColor = Qt::transparent;
  double shadowRadius = 0.0;  // in points
};

/// How far a shadow reaches, in points.
[[nodiscard]] double shadowReach(double radius);

/// The picture of a shape given in white on transparent.
[[nodiscard]] QImage softlyFilled(const QImage& shape, const SoftFill& fill);

}  // namespace lunevra
