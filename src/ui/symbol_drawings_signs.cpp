#include <cmath>

#include "ui/symbol_drawings.h"

namespace lunevra::symbol_drawing {
namespace {

/// Most of a circle with a head at its end, clockwise.
QPainterPath turningArrow(const SymbolPen& pen) {
  QPainterPath arc;
  const QRectF circle(pen.point(3.4, 4.4), pen.point(20.6, 21.6));
  arc.arcMoveTo(circle, 32.0);
  arc.arcTo(circle, 32.0, 296.0);
  const auto head = pen.line({{20.4, 3.0}, {20.4, 8.8}, {14.6, 8.8}});
  return stroked(arc, pen.stroke(), Qt::RoundCap).united(head);
}

}  // namespace

QPainterPath checkmark(const SymbolPen& pen, double x, double y, double reach) {
  return pen.line({{x - 0.85 * reach, y + 0.08 * reach},
                   {x - 0.22 * reach, y + 0.72 * reach},
                   {x + 0.88 * reach, y - 0.68 * reach}});
}

QPainterPath xmark(const SymbolPen& pen, double x, double y, double reach) {
  return pen.line({{x - reach, y - reach}, {x + reach, y + reach}})
      .united(pen.line({{x - reach, y + reach}, {x + reach, y - reach}}));
}

QPainterPath exclamation(const SymbolPen& pen, double x, double top, double bottom) {
  return pen.line({{x, top}, {x, bottom - 4.4}}).united(pen.disc(x, bottom, 1.4));
}

QPainterPath circle(const SymbolPen& pen) {
  return pen.outline(pen.disc(12.0, 12.0, 9.9));
}

QPainterPath checkmarkCircle(const SymbolPen& pen) {
  return pen.disc(12.0, 12.0, 11.0).subtracted(checkmark(pen, 12.0, 12.0, 5.8));
}

QPainterPath xmarkCircle(const SymbolPen& pen) {
  return pen.disc(12.0, 12.0, 11.0).subtracted(xmark(pen, 12.0, 12.0, 3.9));
}

QPainterPath infoCircle(const SymbolPen& pen) {
  return pen.disc(12.0, 12.0, 11.0)
      .subtracted(pen.disc(12.0, 6.8, 1.6))
      .subtracted(pen.line({{12.0, 11.2}, {12.0, 17.4}}));
}

QPainterPath checkmarkSeal(const SymbolPen& pen) {
  constexpr int lobes = 10;
  QPainterPath seal = pen.disc(12.0, 12.0, 9.4);
  for (int lobe = 0; lobe < lobes; ++lobe) {
    const double angle = lobe * 2.0 * M_PI / lobes;
    seal = seal.united(pen.disc(12.0 + 8.3 * std::sin(angle), 12.0 - 8.3 * std::cos(angle), 2.9));
  }
  return seal.subtracted(checkmark(pen, 12.0, 12.0, 5.4));
}

QPainterPath exclamationTriangle(const SymbolPen& pen) {
  QPainterPath triangle(pen.point(12.0, 3.4));
  triangle.lineTo(pen.point(21.8, 20.4));
  triangle.lineTo(pen.point(2.2, 20.4));
  triangle.closeSubpath();
  return triangle.united(stroked(triangle, 1.4 * pen.stroke(), Qt::RoundCap))
      .subtracted(exclamation(pen, 12.0, 8.6, 18.0));
}

QPainterPath power(const SymbolPen& pen) {
  QPainterPath arc;
  const QRectF circle(pen.point(3.0, 4.6), pen.point(21.0, 22.6));
  arc.arcMoveTo(circle, 132.0);
  arc.arcTo(circle, 132.0, 276.0);
  return stroked(arc, pen.stroke(), Qt::RoundCap).united(pen.line({{12.0, 2.4}, {12.0, 11.6}}));
}

QPainterPath arrowClockwise(const SymbolPen& pen) {
  return turningArrow(pen);
}

QPainterPath arrowCounterclockwise(const SymbolPen& pen) {
  QTransform mirror;
  mirror.translate(pen.free(SymbolPen::grid), 0.0);
  mirror.scale(-1.0, 1.0);
  return mirror.map(turningArrow(pen));
}

QPainterPath chevrons(const SymbolPen& pen) {
  return pen.line({{6.4, 8.8}, {12.0, 3.0}, {17.6, 8.8}})
      .united(pen.line({{6.4, 15.2}, {12.0, 21.0}, {17.6, 15.2}}));
}

}  // namespace lunevra::symbol_drawing
