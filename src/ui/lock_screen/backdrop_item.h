#pragma once

#include <QtCore/qlist.h>
#include <QtCore/qpoint.h>
#include <QtGui/qcolor.h>
#include <QtQml/qqmllist.h>
#include <QtQml/qqmlregistration.h>

#include "ui/image_item.h"

namespace lunevra {

/// A blurred disc of light on the backdrop; lengths in points.
class SoftGlow : public QObject {
  Q_OBJECT
  QML_ELEMENT
  Q_PROPERTY(QColor color MEMBER color NOTIFY changed)
  Q_PROPERTY(qreal diameter MEMBER diameter NOTIFY changed)
  Q_PROPERTY(qreal blurRadius MEMBER blurRadius NOTIFY changed)
  Q_PROPERTY(qreal strength MEMBER strength NOTIFY changed)
  /// Parts of the backdrop's width and height.
  Q_PROPERTY(QPointF centre MEMBER centre NOTIFY changed)

 public:
  QColor color = Qt::white;
  qreal diameter = 100.0;
  qreal blurRadius = 10.0;
  qreal strength = 1.0;
  QPointF centre{0.5, 0.5};

 signals:
  void changed();
};

/// The opaque ground of a screen: a gradient along the diagonal, from one colour to another and
/// back, and the glows on it, in one picture.
class BackdropItem : public lunevra::ImageItem {
  Q_OBJECT
  QML_ELEMENT
  Q_PROPERTY(QColor edgeColor MEMBER edgeColor_ NOTIFY changed)
  Q_PROPERTY(QColor middleColor MEMBER middleColor_ NOTIFY changed)
  Q_PROPERTY(QQmlListProperty<lunevra::SoftGlow> glows READ glows CONSTANT)

 public:
  explicit BackdropItem(QQuickItem* parent = nullptr);
  [[nodiscard]] QQmlListProperty<SoftGlow> glows();

 signals:
  void changed();

 protected:
  [[nodiscard]] QImage paintImage(double pixelRatio) const override;
  [[nodiscard]] QString imageName(double pixelRatio) const override;

 private:
  QColor edgeColor_ = Qt::black;
  QColor middleColor_ = Qt::black;
  QList<SoftGlow*> glows_;
};

}  // namespace lunevra
