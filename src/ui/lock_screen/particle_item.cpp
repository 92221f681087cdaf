#include "ui/lock_screen/particle_item.h"

#include <memory>

#include <QtCore/qmath.h>
#include <QtGui/qpainter.h>
#include <QtQuick/qquickwindow.h>
#include <QtQuick/qsgimagenode.h>
#include <QtQuick/qsgnode.h>

namespace lunevra {
namespace {

using std::chrono_literals::operator""ms;

constexpr auto tickInterval = 50ms;
constexpr auto tickTolerance = 10ms;

/// A white disc with a transparent rim of one point, in which its edge can be smoothed wherever
/// between two pixels it lies.
QImage dotImage(double size, double pixelRatio) {
  const int side = qCeil((size + 2.0) * pixelRatio);
  QImage image(side, side, QImage::Format_ARGB32_Premultiplied);
  image.setDevicePixelRatio(pixelRatio);
  image.fill(Qt::transparent);
  QPainter painter(&image);
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setPen(Qt::NoPen);
  painter.setBrush(Qt::white);
  painter.drawEllipse(QRectF(1.0, 1.0, size, size));
  return image;
}

}  // namespace

ParticleItem::ParticleItem(QQuickItem* parent) : QQuickItem(parent) {
  setFlag(ItemHasContents);
  connect(this, &ParticleItem::changed, this, &ParticleItem::updateDrift);
}

void ParticleItem::geometryChange(const QRectF& newGeometry, const QRectF& oldGeometry) {
  QQuickItem::geometryChange(newGeometry, oldGeometry);
  updateDrift();
}

void ParticleItem::updateDrift() {
  if (bridge_ == nullptr || width() <= 0.0 || height() <= 0.0) return;
  if (!field_) field_.emplace(bridge_->host().random, width(), height());
  if (!drifting_) {
    timer_.reset();
  } else if (!timer_) {
    timer_ = bridge_->ticks().scheduleRepeating(tickInterval, tickTolerance, [this] { tick(); });
  }
  update();
}

void ParticleItem::tick() {
  field_->tick(bridge_->host().clock.now(), height());
  update();
}

QSGNode* ParticleItem::makeNodes() const {
  auto root = std::make_unique<QSGNode>();
  const double pixelRatio = window()->effectiveDevicePixelRatio();
  for (const auto& particle : field_->particles()) {
    auto fade = std::make_unique<QSGOpacityNode>();
    auto* dot = window()->createImageNode();
    dot->setFlag(QSGNode::OwnedByParent);
    dot->setOwnsTexture(true);
    dot->setFiltering(QSGTexture::Linear);
    dot->setTexture(window()->createTextureFromImage(dotImage(particle.size, pixelRatio)));
    fade->appendChildNode(dot);
    fade->setFlag(QSGNode::OwnedByParent);
    root->appendChildNode(fade.release());
  }
  return root.release();
}

QSGNode* ParticleItem::updatePaintNode(QSGNode* node, UpdatePaintNodeData*) {
  if (!field_) return node;
  if (node == nullptr) node = makeNodes();
  auto* child = node->firstChild();
  for (const auto& particle : field_->particles()) {
    auto* fade = static_cast<QSGOpacityNode*>(child);
    fade->setOpacity(particle.opacity);
    auto* dot = static_cast<QSGImageNode*>(fade->firstChild());
    const auto side = dot->texture()->textureSize().width() / window()->effectiveDevicePixelRatio();
    dot->setRect(QRectF(particle.x - 1.0, particle.y - 1.0, side, side));
    child = child->nextSibling();
  }
  return node;
}

}  // namespace lunevra
