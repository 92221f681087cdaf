#include "ui/symbol_drawings.h"

namespace lunevra::symbol_drawing {
namespace {

/// Drawn in by `inset` units on all sides.
QPainterPath shield(const SymbolPen& pen, double inset) {
  const double left = 2.2 + inset;
  const double right = SymbolPen::grid - left;
  const double top = 0.8 + inset;
  const double bottom = 23.2 - inset;
  const double shoulder = 4.4 + 0.8 * inset;
  QPainterPath path(pen.point(12.0, top));
  path.cubicTo(pen.point(14.4, top + 1.6), pen.point(right - 3.4, shoulder),
               pen.point(right - 1.0, shoulder));
  path.quadTo(pen.point(right, shoulder), pen.point(right, shoulder + 1.2));
  path.lineTo(pen.point(right, 10.6));
  path.cubicTo(pen.point(right, 16.8), pen.point(right - 4.6, 21.2), pen.point(12.0, bottom));
  path.cubicTo(pen.point(left + 4.6, 21.2), pen.point(left, 16.8), pen.point(left, 10.6));
  path.lineTo(pen.point(left, shoulder + 1.2));
  path.quadTo(pen.point(left, shoulder), pen.point(left + 1.0, shoulder));
  path.cubicTo(pen.point(left + 3.4, shoulder), pen.point(9.6, top + 1.6), pen.point(12.0, top));
  return path;
}

QPainterPath outlinedShield(const SymbolPen& pen) {
  return pen.outline(shield(pen, 1.1));
}

}  // namespace

QPainterPath lockShield(const SymbolPen& pen) {
  QPainterPath shackle(pen.point(9.4, 11.6));
  shackle.lineTo(pen.point(9.4, 9.2));
  shackle.arcTo(QRectF(pen.point(9.4, 6.6), pen.point(14.6, 11.8)), 180.0, -180.0);
  shackle.lineTo(pen.point(14.6, 11.6));
  return shield(pen, 0.0)
      .subtracted(pen.box(7.4, 10.8, 16.6, 17.0, 1.4))
      .subtracted(stroked(shackle, 0.75 * pen.stroke(), Qt::FlatCap));
}

QPainterPath checkmarkShield(const SymbolPen& pen) {
  return shield(pen, 0.0).subtracted(checkmark(pen, 12.0, 11.8, 5.2));
}

QPainterPath exclamationShield(const SymbolPen& pen) {
  return shield(pen, 0.0).subtracted(exclamation(pen, 12.0, 6.6, 17.0));
}

QPainterPath halfShield(const SymbolPen& pen) {
  const auto half = shield(pen, 1.1).intersected(pen.box(0.0, 0.0, 12.0, SymbolPen::grid, 0.0));
  return outlinedShield(pen).united(half);
}

QPainterPath checkerboardShield(const SymbolPen& pen) {
  const auto fields =
      pen.box(0.0, 0.0, 12.0, 11.4, 0.0).united(pen.box(12.0, 11.4, 24.0, 24.0, 0.0));
  return outlinedShield(pen).united(shield(pen, 1.1).intersected(fields));
}

}  // namespace lunevra::symbol_drawing
