#pragma once

#include <QtGui/qcolor.h>
#include <QtQml/qqmlregistration.h>

#include "ui/image_item.h"

namespace lunevra {

/// One of the program's symbols, filled with a colour or with a gradient, from top to bottom or
/// along the diagonal, with a soft shadow around.
class SymbolItem : public lunevra::ImageItem {
  Q_OBJECT
  QML_ELEMENT
  Q_PROPERTY(QString name MEMBER name_ NOTIFY changed REQUIRED)
  Q_PROPERTY(qreal size MEMBER size_ NOTIFY changed)
  Q_PROPERTY(QColor color MEMBER color_ NOTIFY changed)
  Q_PROPERTY(QColor endColor MEMBER endColor_ NOTIFY changed)
  Q_PROPERTY(bool diagonal MEMBER diagonal_ NOTIFY changed)
  Q_PROPERTY(QColor shadowColor MEMBER shadowColor_ NOTIFY changed)
  Q_PROPERTY(qreal shadowRadius MEMBER shadowRadius_ NOTIFY changed)

 public:
  explicit SymbolItem(QQuickItem* parent = nullptr);

 signals:
  void changed();

 protected:
  [[nodiscard]] QImage paintImage(double pixelRatio) const override;
  [[nodiscard]] QRectF imageRect() const override;

 private:
  void resize();

  QString name_;
  qreal size_ = 16.0;  // of the text that it stands with
  QColor color_ = Qt::white;
  QColor endColor_;  // invalid: the colour all over
  bool diagonal_ = false;
  QColor shadowColor_ = Qt::transparent;
  qreal shadowRadius_ = 0.0;
};

}  // namespace lunevra
