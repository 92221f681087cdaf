#include "ui/symbol_paths.h"

#include <algorithm>
#include <cmath>

#include <QtGui/qpen.h>

namespace lunevra {
namespace {

constexpr double grid = 24.0;
constexpr double gridOfTextSize = 1.2;  // a symbol stands a little higher than capitals
constexpr double strokeWeight = 2.2;    // units

/// Places units of the grid on the points of the screen.
class Pen {
 public:
  Pen(double textSize, double pixelRatio)
      : scale_(textSize * gridOfTextSize / grid), pixelRatio_(pixelRatio) {}

  [[nodiscard]] double free(double units) const { return units * scale_; }
  /// The nearest edge of a pixel.
  [[nodiscard]] double edge(double units) const {
    return std::round(free(units) * pixelRatio_) / pixelRatio_;
  }
  [[nodiscard]] QPointF point(double x, double y) const { return {free(x), free(y)}; }
  /// The common weight, never thinner than a pixel.
  [[nodiscard]] double stroke() const { return std::max(edge(strokeWeight), 1.0 / pixelRatio_); }

 private:
  double scale_;
  double pixelRatio_;
};

QPainterPath stroked(const QPainterPath& line, double width, Qt::PenCapStyle cap) {
  QPainterPathStroker stroker;
  stroker.setWidth(width);
  stroker.setCapStyle(cap);
  stroker.setJoinStyle(Qt::RoundJoin);
  return stroker.createStroke(line).simplified();
}

/// A crescent open to the top right: a disc without a second one that lies across its edge. Both
/// arcs end in the same two points.
QPainterPath crescent(const Pen& pen, double centreX, double centreY, double radius) {
  const double innerRadius = 0.86 * radius;
  const double shift = 0.60 * radius;  // of the inner disc, up and to the right
  // Where two circles of these radii and this distance cross, as seen from either centre.
  const double outerHalf = std::acos((shift * shift + radius * radius - innerRadius * innerRadius) /
                                     (2.0 * shift * radius)) *
                           180.0 / M_PI;
  const double innerHalf = std::acos((shift * shift + innerRadius * innerRadius - radius * radius) /
                                     (2.0 * shift * innerRadius)) *
                           180.0 / M_PI;
  constexpr double opening = 40.0;  // degrees above the horizontal
  const double innerX = centreX + shift * std::cos(opening * M_PI / 180.0);
  const double innerY = centreY - shift * std::sin(opening * M_PI / 180.0);
  const auto disc = [&](double x, double y, double r) {
    return QRectF(pen.point(x - r, y - r), pen.point(x + r, y + r));
  };
  const auto outer = disc(centreX, centreY, radius);
  const auto inner = disc(innerX, innerY, innerRadius);
  QPainterPath path;
  path.arcMoveTo(outer, opening + outerHalf);
  path.arcTo(outer, opening + outerHalf, 360.0 - 2.0 * outerHalf);
  path.arcTo(inner, opening + 180.0 + innerHalf, -2.0 * innerHalf);
  path.closeSubpath();
  return path;
}

/// Four points, drawn in towards the middle.
QPainterPath star(const Pen& pen, double x, double y, double reach) {
  constexpr double waist = 0.16;
  QPainterPath path(pen.point(x, y - reach));
  const auto to = [&](double tipX, double tipY, double inX, double inY) {
    path.quadTo(pen.point(x + inX * waist * reach, y + inY * waist * reach),
                pen.point(x + tipX * reach, y + tipY * reach));
  };
  to(1, 0, 1, -1);
  to(0, 1, 1, 1);
  to(-1, 0, -1, 1);
  to(0, -1, -1, -1);
  path.closeSubpath();
  return path;
}

QPainterPath sleepingZ(const Pen& pen, double left, double top, double width) {
  const double height = width * 1.05;
  QPainterPath line(pen.point(left, top));
  line.lineTo(pen.point(left + width, top));
  line.lineTo(pen.point(left, top + height));
  line.lineTo(pen.point(left + width, top + height));
  return stroked(line, 0.75 * pen.stroke(), Qt::RoundCap);
}

QPainterPath lock(const Pen& pen) {
  QPainterPath body;
  const QRectF box(QPointF(pen.edge(4.0), pen.edge(10.5)), QPointF(pen.edge(20.0), pen.edge(22.5)));
  body.addRoundedRect(box, pen.free(2.8), pen.free(2.8));
  const double half = pen.stroke() / 2.0;
  const double left = pen.edge(7.0) + half;
  const double right = box.left() + box.right() - left;
  const double radius = (right - left) / 2.0;
  const double top = pen.edge(1.5) + half;
  QPainterPath shackle(QPointF(left, box.top() + half));
  shackle.lineTo(left, top + radius);
  shackle.arcTo(QRectF(left, top, 2.0 * radius, 2.0 * radius), 180.0, -180.0);
  shackle.lineTo(right, box.top() + half);
  return body.united(stroked(shackle, pen.stroke(), Qt::FlatCap));
}

/// A box seen from the front, its upper part set off by a gap, with a lamp.
QPainterPath externalDrive(const Pen& pen) {
  const double left = pen.edge(1.5);
  const double right = pen.edge(22.5);
  const double seam = pen.edge(13.0);
  const double gap = pen.stroke() * 0.7;
  QPainterPath top(QPointF(left, seam));
  top.lineTo(pen.point(4.6, 5.6));
  top.quadTo(pen.point(5.2, 4.0), pen.point(7.0, 4.0));
  top.lineTo(pen.point(17.0, 4.0));
  top.quadTo(pen.point(18.8, 4.0), pen.point(19.4, 5.6));
  top.lineTo(right, seam);
  top.closeSubpath();
  QPainterPath front;
  front.addRoundedRect(QRectF(QPointF(left, seam + gap), QPointF(right, pen.edge(20.5))),
                       pen.free(2.2), pen.free(2.2));
  QPainterPath lamp;
  lamp.addEllipse(QPointF(pen.free(18.4), (seam + gap + pen.edge(20.5)) / 2.0), pen.free(1.3),
                  pen.free(1.3));
  return top.united(front.subtracted(lamp));
}

}  // namespace

double symbolSide(double textSize) {
  return std::ceil(textSize * gridOfTextSize);
}

QPainterPath symbolPath(Symbol symbol, double textSize, double pixelRatio) {
  const Pen pen(textSize, pixelRatio);
  switch (symbol) {
    case Symbol::moon:
      return crescent(pen, 11.6, 12.4, 10.4);
    case Symbol::moonStars:
      return crescent(pen, 10.6, 13.4, 9.4)
          .united(star(pen, 18.0, 4.9, 4.0))
          .united(star(pen, 20.6, 12.6, 2.6));
    case Symbol::moonZzz:
      return crescent(pen, 10.4, 13.6, 9.2)
          .united(sleepingZ(pen, 13.6, 9.6, 3.4))
          .united(sleepingZ(pen, 17.8, 2.0, 4.8));
    case Symbol::lock:
      return lock(pen);
    case Symbol::externalDrive:
      return externalDrive(pen);
  }
  return {};
}

}  // namespace lunevra
