#pragma once

#include <QtQml/qqmlregistration.h>
#include <QtQuick/qquickpainteditem.h>

namespace lunevra {

/// The two rings around the countdown's number: a faint outline that breathes, and in it the arc
/// that drains. The item reaches beyond `diameter` by as much as the outline grows.
class CountdownRingItem : public QQuickPaintedItem {
  Q_OBJECT
  QML_ELEMENT
  Q_PROPERTY(qreal diameter MEMBER diameter_ NOTIFY changed)
  Q_PROPERTY(qreal progress MEMBER progress_ NOTIFY changed)
  Q_PROPERTY(qreal pulseScale MEMBER pulseScale_ NOTIFY changed)

 public:
  explicit CountdownRingItem(QQuickItem* parent = nullptr);
  void paint(QPainter* painter) override;

 signals:
  void changed();

 private:
  void paintOutline(QPainter& painter) const;
  void paintArc(QPainter& painter) const;

  qreal diameter_ = 100.0;
  qreal progress_ = 1.0;
  qreal pulseScale_ = 1.0;
};

}  // namespace lunevra
