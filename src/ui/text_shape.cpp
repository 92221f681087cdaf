#include "ui/text_shape.h"

#include <algorithm>
#include <utility>

#include <QtCore/qmath.h>
#include <QtGui/qfontmetrics.h>
#include <QtGui/qpainter.h>
#include <QtGui/qpainterpath.h>
#include <QtGui/qtextlayout.h>
#include <QtGui/qtextoption.h>

namespace lunevra {
namespace {

constexpr double unlimited = 1e5;

}  // namespace

TextShape::TextShape(QString text, const TextStyle& style)
    : text_(std::move(text)),
      style_(style),
      typeface_(typefaceFor(style.design, style.size, style.weight, style.italic)) {
  if (style_.hasEqualDigits) {
    const QFontMetricsF metrics(typeface_.font);
    double width = 0.0;
    for (const auto character : std::as_const(text_)) width += cellWidth(character);
    size_ = QSize(qCeil(width), qCeil(metrics.height()));
  } else {
    measureLines();
  }
}

void TextShape::measureLines() {
  lineWidth_ = style_.maximumWidth > 0.0 ? style_.maximumWidth : unlimited;
  const double height = flow(lineWidth_, nullptr).height();
  if (height > 1.5 * QFontMetricsF(typeface_.font).height()) {
    // The narrowest measure that needs no further line makes the lines equally long.
    double tooNarrow = 0.0;
    double wideEnough = lineWidth_;
    while (wideEnough - tooNarrow > 1.0) {
      const double middle = (tooNarrow + wideEnough) / 2.0;
      const auto flowed = flow(middle, nullptr);
      const bool fits = flowed.height() <= height && flowed.width() <= middle;
      (fits ? wideEnough : tooNarrow) = middle;
    }
    lineWidth_ = wideEnough;
  }
  const auto size = flow(lineWidth_, nullptr);
  size_ = QSize(qCeil(size.width()), qCeil(size.height()));
}

QSizeF TextShape::flow(double width, QPainter* painter) const {
  QTextLayout layout(text_, typeface_.font);
  layout.setTextOption(QTextOption(Qt::AlignHCenter));
  layout.beginLayout();
  double y = 0.0;
  double widest = 0.0;
  for (auto line = layout.createLine(); line.isValid(); line = layout.createLine()) {
    line.setLineWidth(width);
    if (line.lineNumber() > 0) y += style_.lineSpacing;
    line.setPosition({0.0, y});
    y += line.height();
    widest = std::max(widest, line.naturalTextWidth());
  }
  layout.endLayout();
  if (painter != nullptr) layout.draw(painter, {0.0, 0.0});
  return {widest, y};
}

void TextShape::draw(QPainter& painter) const {
  painter.setPen(Qt::white);
  if (style_.hasEqualDigits) {
    drawDigits(painter);
  } else {
    // Set to the measure that was found: a tighter one might wrap once more.
    painter.translate((size_.width() - lineWidth_) / 2.0, 0.0);
    static_cast<void>(flow(lineWidth_, &painter));
  }
}

void TextShape::drawDigits(QPainter& painter) const {
  const QFontMetricsF metrics(typeface_.font);
  QPainterPath path;
  path.setFillRule(Qt::WindingFill);
  double x = 0.0;
  for (const auto character : text_) {
    const double cell = cellWidth(character);
    const double own = metrics.horizontalAdvance(character);
    path.addText(x + (cell - own) / 2.0, metrics.ascent(), typeface_.font, QString(character));
    x += cell;
  }
  painter.setRenderHint(QPainter::Antialiasing);
  painter.fillPath(path, Qt::white);
  if (typeface_.thinning <= 0.0) return;
  painter.setCompositionMode(QPainter::CompositionMode_DestinationOut);
  painter.strokePath(
      path, QPen(Qt::black, 2.0 * typeface_.thinning, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
}

double TextShape::cellWidth(QChar character) const {
  const QFontMetricsF metrics(typeface_.font);
  if (!character.isDigit()) return metrics.horizontalAdvance(character);
  double widest = 0.0;
  for (char digit = '0'; digit <= '9'; ++digit)
    widest = std::max(widest, metrics.horizontalAdvance(QLatin1Char(digit)));
  return widest;
}

}  // namespace lunevra
