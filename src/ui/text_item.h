#pragma once

#include <optional>

#include <QtGui/qcolor.h>
#include <QtQml/qqmlregistration.h>

#include "ui/image_item.h"
#include "ui/text_shape.h"

namespace lunevra {

/// A text, filled with a colour or from top to bottom with a gradient, with a soft shadow around.
class TextItem : public lunevra::ImageItem {
  Q_OBJECT
  QML_ELEMENT
  Q_PROPERTY(QString text MEMBER text_ WRITE setText NOTIFY textChanged)
  Q_PROPERTY(Design design MEMBER design_ NOTIFY styleChanged)
  Q_PROPERTY(qreal size MEMBER size_ NOTIFY styleChanged)
  Q_PROPERTY(Weight weight MEMBER weight_ NOTIFY styleChanged)
  Q_PROPERTY(bool italic MEMBER italic_ NOTIFY styleChanged)
  Q_PROPERTY(bool equalDigits MEMBER equalDigits_ NOTIFY styleChanged)
  Q_PROPERTY(qreal maximumWidth MEMBER maximumWidth_ NOTIFY styleChanged)
  Q_PROPERTY(qreal lineSpacing MEMBER lineSpacing_ NOTIFY styleChanged)
  Q_PROPERTY(QColor color MEMBER color_ NOTIFY colorsChanged)
  Q_PROPERTY(QColor bottomColor MEMBER bottomColor_ NOTIFY colorsChanged)
  Q_PROPERTY(QColor shadowColor MEMBER shadowColor_ NOTIFY colorsChanged)
  Q_PROPERTY(qreal shadowRadius MEMBER shadowRadius_ NOTIFY colorsChanged)

 public:
  // NOLINTBEGIN(readability-identifier-naming): QML knows enumerators by their capital letter
  enum Design { Standard, Rounded, Serif };
  Q_ENUM(Design)
  enum Weight { UltraLight, Light, Regular, Medium, Semibold };
  Q_ENUM(Weight)
  // NOLINTEND(readability-identifier-naming)

  explicit TextItem(QQuickItem* parent = nullptr);
  void setText(const QString& text);

 signals:
  void textChanged();
  void styleChanged();
  void colorsChanged();

 protected:
  [[nodiscard]] QImage paintImage(double pixelRatio) const override;
  [[nodiscard]] QRectF imageRect() const override;
  void componentComplete() override;

 private:
  void reshape();
  [[nodiscard]] TextStyle style() const;
  [[nodiscard]] bool hasShadow() const;

  QString text_;
  Design design_ = Standard;
  qreal size_ = 16.0;
  Weight weight_ = Regular;
  bool italic_ = false;
  bool equalDigits_ = false;
  qreal maximumWidth_ = 0.0;
  qreal lineSpacing_ = 0.0;
  QColor color_ = Qt::white;
  QColor bottomColor_;  // invalid: the colour all over
  QColor shadowColor_ = Qt::transparent;
  qreal shadowRadius_ = 0.0;
  std::optional<TextShape> shape_;
};

}  // namespace lunevra
