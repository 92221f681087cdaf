#include "ui/soft_fill.h"

#include <cmath>

#include <QtGui/qpainter.h>

#include "ui/gaussian_blur.h"

namespace lunevra {
namespace {

// The radius of a shadow counts two standard deviations, so that its visible edge is about there.
constexpr double sigmaOfRadius = 0.5;

QImage tinted(QImage shape, const QBrush& brush) {
  QPainter painter(&shape);
  painter.setCompositionMode(QPainter::CompositionMode_SourceIn);
  painter.fillRect(QRectF(QPointF(), shape.deviceIndependentSize()), brush);
  return shape;
}

}  // namespace

double shadowReach(double radius) {
  return std::ceil(3.0 * sigmaOfRadius * radius);
}

QImage softlyFilled(const QImage& shape, const SoftFill& fill) {
  const auto filled = tinted(shape, fill.brush);
  if (fill.shadowColor.alpha() == 0 || fill.shadowRadius <= 0.0) return filled;
  const double ratio = shape.devicePixelRatio();
  auto picture =
      gaussianBlurred(tinted(shape, fill.shadowColor), sigmaOfRadius * fill.shadowRadius * ratio);
  picture.setDevicePixelRatio(ratio);
  QPainter painter(&picture);
  painter.drawImage(QPointF(), filled);
  return picture;
}

}  // namespace lunevra
