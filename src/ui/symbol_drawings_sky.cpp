#include <cmath>

#include "ui/symbol_drawings.h"

namespace lunevra::symbol_drawing {
namespace {

/// A crescent open to the top right: a disc without a second one that lies across its edge. Both
/// arcs end in the same two points.
QPainterPath crescent(const SymbolPen& pen, double centreX, double centreY, double radius) {
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
QPainterPath star(const SymbolPen& pen, double x, double y, double reach) {
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

QPainterPath sleepingZ(const SymbolPen& pen, double left, double top, double width) {
  const double height = width * 1.05;
  QPainterPath line(pen.point(left, top));
  line.lineTo(pen.point(left + width, top));
  line.lineTo(pen.point(left, top + height));
  line.lineTo(pen.point(left + width, top + height));
  return stroked(line, 0.75 * pen.stroke(), Qt::RoundCap);
}

}  // namespace

QPainterPath moon(const SymbolPen& pen) {
  return crescent(pen, 11.6, 12.4, 10.4);
}

QPainterPath moonStars(const SymbolPen& pen) {
  return crescent(pen, 10.6, 13.4, 9.4)
      .united(star(pen, 18.0, 4.9, 4.0))
      .united(star(pen, 20.6, 12.6, 2.6));
}

QPainterPath moonZzz(const SymbolPen& pen) {
  return crescent(pen, 10.4, 13.6, 9.2)
      .united(sleepingZ(pen, 13.6, 9.6, 3.4))
      .united(sleepingZ(pen, 17.8, 2.0, 4.8));
}

QPainterPath sunrise(const SymbolPen& pen) {
  QPainterPath sun;
  const QRectF disc(pen.point(7.2, 12.2), pen.point(16.8, 21.8));
  sun.arcMoveTo(disc, 0.0);
  sun.arcTo(disc, 0.0, 180.0);
  return stroked(sun, pen.stroke(), Qt::RoundCap)
      .united(pen.line({{1.6, 21.0}, {22.4, 21.0}}))
      .united(pen.line({{3.6, 10.4}, {4.8, 11.6}}))
      .united(pen.line({{20.4, 10.4}, {19.2, 11.6}}))
      .united(pen.line({{12.0, 2.0}, {12.0, 8.6}}))
      .united(pen.line({{8.8, 4.8}, {12.0, 1.8}, {15.2, 4.8}}));
}

}  // namespace lunevra::symbol_drawing
