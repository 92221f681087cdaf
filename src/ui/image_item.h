#pragma once

#include <memory>

#include <QtGui/qimage.h>
#include <QtQml/qqmlregistration.h>
#include <QtQuick/qquickitem.h>

namespace lunevra {

/// An item that is one picture: painted once, in the pixels of its screen, and then only moved,
/// scaled and faded. The software scene graph draws no effects, so whatever glows or is filled with
/// a gradient is such a picture. QML finds the base of a derived item only by its full name.
class ImageItem : public QQuickItem {
  Q_OBJECT
  QML_ANONYMOUS

 public:
  explicit ImageItem(QQuickItem* parent = nullptr);

 protected:
  /// Paints the picture for `imageRect`, `pixelRatio` pixels to the point.
  [[nodiscard]] virtual QImage paintImage(double pixelRatio) const = 0;
  /// Tells the picture from every other that items of the same class paint; items of equal names
  /// show one picture. Empty: a picture of its own.
  [[nodiscard]] virtual QString imageName(double) const { return {}; }
  /// Where the picture lies, in the item's coordinates; a glow may reach beyond the item.
  [[nodiscard]] virtual QRectF imageRect() const;
  /// The picture is out of date.
  void invalidateImage();
  /// A transparent picture that covers `imageRect`.
  [[nodiscard]] QImage emptyImage(double pixelRatio) const;

  QSGNode* updatePaintNode(QSGNode* node, UpdatePaintNodeData* data) override;
  void geometryChange(const QRectF& newGeometry, const QRectF& oldGeometry) override;
  void itemChange(ItemChange change, const ItemChangeData& value) override;

 private:
  [[nodiscard]] std::shared_ptr<const QImage> image(double pixelRatio) const;

  bool isOutOfDate_ = true;
  std::shared_ptr<const QImage> shown_;
};

}  // namespace lunevra
