#pragma once

#include <optional>

#include <QtQml/qqmlregistration.h>
#include <QtQuick/qquickitem.h>

#include "ui/lock_screen/lock_screen_bridge.h"
#include "ui/lock_screen/particle_field.h"

namespace lunevra {

/// The drifting dots, in one canvas. Each is a small picture of its own in the scene graph, so that
/// a tick redraws fifty dots and not a whole display.
class ParticleItem : public QQuickItem {
  Q_OBJECT
  QML_ELEMENT
  Q_PROPERTY(lunevra::LockScreenBridge* bridge MEMBER bridge_ NOTIFY changed REQUIRED)
  Q_PROPERTY(bool drifting MEMBER drifting_ NOTIFY changed)

 public:
  explicit ParticleItem(QQuickItem* parent = nullptr);

 signals:
  void changed();

 protected:
  QSGNode* updatePaintNode(QSGNode* node, UpdatePaintNodeData* data) override;
  void geometryChange(const QRectF& newGeometry, const QRectF& oldGeometry) override;

 private:
  void updateDrift();
  void tick();
  [[nodiscard]] QSGNode* makeNodes() const;

  LockScreenBridge* bridge_ = nullptr;
  bool drifting_ = false;
  std::optional<ParticleField> field_;
  Registration timer_;
};

}  // namespace lunevra
