#include "ui/image_item.h"

#include <QtCore/qmath.h>
#include <QtQml/qqmlengine.h>
#include <QtQuick/qquickwindow.h>
#include <QtQuick/qsgimagenode.h>

#include "ui/painted_images.h"

namespace lunevra {

ImageItem::ImageItem(QQuickItem* parent) : QQuickItem(parent) {
  setFlag(ItemHasContents);
}

QRectF ImageItem::imageRect() const {
  return boundingRect();
}

void ImageItem::invalidateImage() {
  isOutOfDate_ = true;
  update();
}

QImage ImageItem::emptyImage(double pixelRatio) const {
  const auto size = imageRect().size() * pixelRatio;
  QImage image(qCeil(size.width()), qCeil(size.height()), QImage::Format_ARGB32_Premultiplied);
  image.setDevicePixelRatio(pixelRatio);
  image.fill(Qt::transparent);
  return image;
}

std::shared_ptr<const QImage> ImageItem::image(double pixelRatio) const {
  const auto paint = [&] { return paintImage(pixelRatio); };
  const auto name = imageName(pixelRatio);
  auto* const engine = qmlEngine(this);
  if (name.isEmpty() || engine == nullptr) return std::make_shared<const QImage>(paint());
  return PaintedImages::of(*engine).image(metaObject()->className() + name, paint);
}

QSGNode* ImageItem::updatePaintNode(QSGNode* node, UpdatePaintNodeData*) {
  auto* imageNode = static_cast<QSGImageNode*>(node);
  const auto rect = imageRect();
  if (rect.isEmpty()) {
    delete node;  // the scene graph hands it over here
    return nullptr;
  }
  if (imageNode == nullptr) {
    imageNode = window()->createImageNode();
    imageNode->setOwnsTexture(true);
    imageNode->setFiltering(QSGTexture::Linear);
    isOutOfDate_ = true;
  }
  if (isOutOfDate_) {
    shown_ = image(window()->effectiveDevicePixelRatio());
    const auto options = shown_->hasAlphaChannel() ? QQuickWindow::TextureHasAlphaChannel
                                                   : QQuickWindow::TextureIsOpaque;
    imageNode->setTexture(window()->createTextureFromImage(*shown_, options));
    isOutOfDate_ = false;
  }
  imageNode->setRect(rect);
  return imageNode;
}

void ImageItem::geometryChange(const QRectF& newGeometry, const QRectF& oldGeometry) {
  QQuickItem::geometryChange(newGeometry, oldGeometry);
  if (newGeometry.size() != oldGeometry.size()) invalidateImage();
}

void ImageItem::itemChange(ItemChange change, const ItemChangeData& value) {
  QQuickItem::itemChange(change, value);
  if (change == ItemDevicePixelRatioHasChanged) invalidateImage();
}

}  // namespace lunevra
