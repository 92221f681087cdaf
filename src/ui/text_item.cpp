#include "ui/text_item.h"

#include <QtGui/qpainter.h>

#include "ui/soft_fill.h"

namespace lunevra {
namespace {

TypeDesign typeDesign(TextItem::Design design) {
  switch (design) {
    case TextItem::Standard:
      return TypeDesign::standard;
    case TextItem::Rounded:
      return TypeDesign::rounded;
    case TextItem::Serif:
      return TypeDesign::serif;
  }
  return TypeDesign::standard;
}

QFont::Weight fontWeight(TextItem::Weight weight) {
  switch (weight) {
    case TextItem::UltraLight:
      return QFont::ExtraLight;
    case TextItem::Light:
      return QFont::Light;
    case TextItem::Regular:
      return QFont::Normal;
    case TextItem::Medium:
      return QFont::Medium;
    case TextItem::Semibold:
      return QFont::DemiBold;
  }
  return QFont::Normal;
}

}  // namespace

TextItem::TextItem(QQuickItem* parent) : ImageItem(parent) {
  connect(this, &TextItem::styleChanged, this, &TextItem::reshape);
  connect(this, &TextItem::colorsChanged, this, &TextItem::invalidateImage);
}

void TextItem::setText(const QString& text) {
  if (text_ == text) return;
  text_ = text;
  reshape();
  emit textChanged();
}

void TextItem::componentComplete() {
  ImageItem::componentComplete();
  reshape();
}

void TextItem::reshape() {
  if (!isComponentComplete()) return;
  shape_.emplace(text_, style());
  setImplicitSize(shape_->size().width(), shape_->size().height());
  invalidateImage();
}

TextStyle TextItem::style() const {
  return {.design = typeDesign(design_),
          .size = size_,
          .weight = fontWeight(weight_),
          .italic = italic_,
          .hasEqualDigits = equalDigits_,
          .maximumWidth = maximumWidth_,
          .lineSpacing = lineSpacing_};
}

bool TextItem::hasShadow() const {
  return shadowColor_.alpha() > 0 && shadowRadius_ > 0.0;
}

QRectF TextItem::imageRect() const {
  if (!shape_ || text_.isEmpty()) return {};
  const double reach = hasShadow() ? shadowReach(shadowRadius_) : 0.0;
  return QRectF(QPointF(), shape_->size()).marginsAdded({reach, reach, reach, reach});
}

QImage TextItem::paintImage(double pixelRatio) const {
  auto image = emptyImage(pixelRatio);
  const auto origin = -imageRect().topLeft();
  {
    QPainter painter(&image);
    painter.translate(origin);
    shape_->draw(painter);
  }
  QBrush brush(color_);
  if (bottomColor_.isValid()) {
    QLinearGradient gradient(origin, origin + QPointF(0.0, shape_->size().height()));
    gradient.setColorAt(0.0, color_);
    gradient.setColorAt(1.0, bottomColor_);
    brush = gradient;
  }
  return softlyFilled(image, {brush, shadowColor_, shadowRadius_});
}

}  // namespace lunevra
