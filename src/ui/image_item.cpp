#include "ui/image_item.h"

#include <QtCore/qmath.h>
#include <QtQuick/qquickwindow.h>
#include <QtQuick/qsgimagenode.h>

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

QSGNode* ImageItem::updatePaintNode(QSGNode* node, UpdatePaintNodeData*) {
  auto* imageNode = static_cast<QSGImageNode*>(node);
  const auto rect = imageRect();
  if (rect.isEmpty()) {
    delete node;  // NOLINT(cppcoreguidelines-owning-memory): the scene graph hands it over here
    return nullptr;
  }
  if (imageNode == nullptr) {
    imageNode = window()->createImageNode();
    imageNode->setOwnsTexture(true);
    imageNode->setFiltering(QSGTexture::Linear);
    isOutOfDate_ = true;
  }
  if (isOutOfDate_) {
    const auto image = paintImage(window()->effectiveDevicePixelRatio());
    const auto options = image.hasAlphaChannel() ? QQuickWindow::TextureHasAlphaChannel
                                                 : QQuickWindow::TextureIsOpaque;
    imageNode->setTexture(window()->createTextureFromImage(image, options));
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
