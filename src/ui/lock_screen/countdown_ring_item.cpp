#include "ui/lock_screen/countdown_ring_item.h"

#include <QtGui/qpainter.h>

#include "ui/qt_color.h"

namespace lunevra {
namespace {

constexpr double outlineWidth = 3.0;
constexpr double outlineOpacity = 0.5;
constexpr double arcWidth = 6.0;
constexpr double arcPart = 0.9;  // of the diameter

QBrush diagonalGradient(double side, const QColor& from, const QColor& to) {
  QLinearGradient gradient(-side / 2.0, -side / 2.0, side / 2.0, side / 2.0);
  gradient.setColorAt(0.0, from);
  gradient.setColorAt(1.0, to);
  return gradient;
}

QRectF centredSquare(double side) {
  return {-side / 2.0, -side / 2.0, side, side};
}

}  // namespace

CountdownRingItem::CountdownRingItem(QQuickItem* parent) : QQuickPaintedItem(parent) {
  setAntialiasing(true);
  connect(this, &CountdownRingItem::changed, this, [this] { update(); });
}

void CountdownRingItem::paint(QPainter* painter) {
  painter->setRenderHint(QPainter::Antialiasing);
  painter->translate(width() / 2.0, height() / 2.0);
  paintOutline(*painter);
  paintArc(*painter);
}

void CountdownRingItem::paintOutline(QPainter& painter) const {
  painter.save();
  painter.scale(pulseScale_, pulseScale_);
  painter.setOpacity(outlineOpacity);
  painter.setPen(QPen(diagonalGradient(diameter_, qtColor("ef4444", 0.3), qtColor("dc2626", 0.1)),
                      outlineWidth));
  painter.drawEllipse(centredSquare(diameter_));
  painter.restore();
}

void CountdownRingItem::paintArc(QPainter& painter) const {
  if (progress_ <= 0.0) return;
  constexpr int wholeTurn = 360 * 16;
  const double side = diameter_ * arcPart;
  painter.save();
  painter.rotate(-90.0);  // the colours turn with the arc
  painter.setPen(QPen(diagonalGradient(side, qtColor("ef4444"), qtColor("f97316")), arcWidth,
                      Qt::SolidLine, Qt::RoundCap));
  painter.drawArc(centredSquare(side), 0, -qRound(progress_ * wholeTurn));
  painter.restore();
}

}  // namespace lunevra
