#include "ui/symbol_item.h"

#include <QtGui/qpainter.h>

#include "ui/soft_fill.h"
#include "ui/symbol_paths.h"

namespace lunevra {
SymbolItem::SymbolItem(QQuickItem* parent) : ImageItem(parent) {
  connect(this, &SymbolItem::changed, this, &SymbolItem::resize);
  resize();
}

void SymbolItem::resize() {
  const double side = symbolSide(size_);
  setImplicitSize(side, side);
  invalidateImage();
}

QRectF SymbolItem::imageRect() const {
  const double reach = shadowColor_.alpha() > 0 ? shadowReach(shadowRadius_) : 0.0;
  const double side = symbolSide(size_);
  return QRectF(0.0, 0.0, side, side).marginsAdded({reach, reach, reach, reach});
}

QImage SymbolItem::paintImage(double pixelRatio) const {
  const auto path = symbolPath(name_.toStdString(), size_, pixelRatio);
  auto image = emptyImage(pixelRatio);
  const auto origin = -imageRect().topLeft();
  {
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.translate(origin);
    painter.fillPath(path, Qt::white);
  }
  QBrush brush(color_);
  if (endColor_.isValid()) {
    const auto bounds = path.boundingRect().translated(origin);
    QLinearGradient gradient(bounds.topLeft(),
                             diagonal_ ? bounds.bottomRight() : bounds.bottomLeft());
    gradient.setColorAt(0.0, color_);
    gradient.setColorAt(1.0, endColor_);
    brush = gradient;
  }
  return softlyFilled(image, {brush, shadowColor_, shadowRadius_});
}

}  // namespace lunevra
