#include <cmath>

#include "ui/symbol_drawings.h"

namespace lunevra::symbol_drawing {
namespace {

/// Puts a small sign over the lower right corner, set off from the rest by a gap.
QPainterPath withBadge(const SymbolPen& pen, const QPainterPath& shape, const QPainterPath& sign) {
  return shape.subtracted(pen.disc(17.8, 17.8, 7.4))
      .united(pen.disc(17.8, 17.8, 5.9).subtracted(sign));
}

QPainterPath driveOutline(const SymbolPen& pen) {
  QPainterPath top(pen.point(2.6, 13.6));
  top.lineTo(pen.point(5.2, 5.4));
  top.lineTo(pen.point(18.8, 5.4));
  top.lineTo(pen.point(21.4, 13.6));
  return stroked(top, pen.stroke(), Qt::FlatCap)
      .united(pen.outline(pen.box(2.6, 13.0, 21.4, 19.4, 2.0)));
}

}  // namespace

QPainterPath lock(const SymbolPen& pen) {
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
QPainterPath externalDrive(const SymbolPen& pen) {
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

QPainterPath externalDriveCheckmark(const SymbolPen& pen) {
  return withBadge(pen, externalDrive(pen), checkmark(pen, 17.8, 17.8, 3.2));
}

QPainterPath externalDriveXmark(const SymbolPen& pen) {
  return withBadge(pen, driveOutline(pen), xmark(pen, 17.8, 17.8, 2.3));
}

QPainterPath key(const SymbolPen& pen) {
  const auto head = pen.disc(7.2, 12.0, 6.0).subtracted(pen.disc(5.4, 12.0, 1.8));
  return head.united(pen.box(12.0, 10.6, 23.0, 13.4, 0.8))
      .united(pen.box(16.4, 12.0, 18.6, 17.0, 0.6))
      .united(pen.box(20.4, 12.0, 22.6, 16.0, 0.6));
}

QPainterPath calendarLock(const SymbolPen& pen) {
  auto page = pen.outline(pen.box(2.4, 4.4, 20.6, 20.6, 3.0));
  page = page.united(pen.box(2.0, 4.0, 21.0, 9.2, 2.4));
  page =
      page.united(pen.line({{7.0, 2.2}, {7.0, 5.0}})).united(pen.line({{16.0, 2.2}, {16.0, 5.0}}));
  QPainterPath shackle;
  const QRectF arc(pen.point(15.8, 12.6), pen.point(20.6, 17.4));
  shackle.moveTo(pen.point(15.8, 18.0));
  shackle.arcTo(arc, 180.0, -180.0);
  shackle.lineTo(pen.point(20.6, 18.0));
  const auto small = pen.box(13.6, 16.8, 22.8, 23.2, 1.4)
                         .united(stroked(shackle, 0.8 * pen.stroke(), Qt::FlatCap));
  return page.subtracted(pen.box(12.0, 11.0, 24.0, 24.0, 3.0)).united(small);
}

QPainterPath twoDisplays(const SymbolPen& pen) {
  const auto back = pen.outline(pen.box(9.4, 3.6, 22.6, 13.0, 1.8));
  const auto front = pen.outline(pen.box(1.4, 7.6, 16.0, 17.6, 1.8))
                         .united(pen.line({{8.7, 18.0}, {8.7, 21.0}}))
                         .united(pen.line({{5.4, 21.4}, {12.0, 21.4}}));
  return back.subtracted(pen.box(0.0, 5.6, 18.2, 19.6, 2.6)).united(front);
}

QPainterPath keyboardEllipsis(const SymbolPen& pen) {
  auto board = pen.outline(pen.box(1.4, 4.8, 22.6, 18.2, 2.6));
  for (const double x : {6.2, 10.0, 13.8, 17.6}) board = board.united(pen.disc(x, 9.2, 1.15));
  board = board.united(pen.line({{7.0, 13.8}, {11.0, 13.8}}, 0.9));
  QPainterPath dots;
  for (const double x : {14.9, 17.8, 20.7}) dots = dots.united(pen.disc(x, 17.8, 1.05));
  return withBadge(pen, board, dots);
}

QPainterPath gear(const SymbolPen& pen) {
  constexpr int teeth = 8;
  constexpr double halfTurn = 180.0;
  QPainterPath wheel = pen.disc(12.0, 12.0, 8.2);
  for (int tooth = 0; tooth < teeth; ++tooth) {
    const double angle = tooth * 2.0 * M_PI / teeth;
    QTransform turn;
    turn.translate(pen.free(12.0), pen.free(12.0));
    turn.rotate(angle * halfTurn / M_PI);
    QPainterPath cog;
    cog.addRoundedRect(QRectF(pen.point(-2.1, -11.0), pen.point(2.1, -6.0)), pen.free(1.1),
                       pen.free(1.1));
    wheel = wheel.united(turn.map(cog));
  }
  return wheel.subtracted(pen.disc(12.0, 12.0, 5.6)).united(pen.disc(12.0, 12.0, 2.6));
}

}  // namespace lunevra::symbol_drawing
