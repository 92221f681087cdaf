#pragma once

#include <QtCore/qelapsedtimer.h>
#include <QtCore/qtimer.h>
#include <QtGui/qcolor.h>
#include <QtQml/qqmlregistration.h>

#include "ui/dither.h"
#include "ui/image_item.h"

namespace lunevra {

/// The light behind the clock, which breathes while it can be seen. A breath goes in steps too
/// small to be noticed, some two a second, so that a night of it costs little.
class BreathingGlowItem : public lunevra::ImageItem {
  Q_OBJECT
  QML_ELEMENT
  Q_PROPERTY(QColor color MEMBER color_ NOTIFY changed)
  Q_PROPERTY(bool breathing READ isBreathing WRITE setBreathing NOTIFY breathingChanged)

 public:
  explicit BreathingGlowItem(QQuickItem* parent = nullptr);
  [[nodiscard]] bool isBreathing() const { return timer_.isActive(); }
  /// Each start begins a new breath.
  void setBreathing(bool isBreathing);

 signals:
  void changed();
  void breathingChanged();

 protected:
  [[nodiscard]] QImage paintImage(double pixelRatio) const override;
  /// As large as the deepest breath.
  [[nodiscard]] QRectF imageRect() const override;

 private:
  void step();

  double size_ = 1.0;
  QColor color_ = Qt::white;
  QTimer timer_;
  QElapsedTimer elapsed_;
  DitherNoise ditherNoise_;
};

}  // namespace lunevra
