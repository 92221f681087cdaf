#pragma once

#include <cmath>
#include <optional>

#include <QtCore/qelapsedtimer.h>
#include <QtCore/qobject.h>
#include <QtCore/qtimer.h>
#include <QtQml/qqmlregistration.h>

#include "ui/lock_screen/countdown_motion.h"

namespace lunevra {

/// Runs the countdown's motion frame by frame, from the moment it is made.
class CountdownAnimator : public QObject {
  Q_OBJECT
  QML_ELEMENT
  Q_PROPERTY(
      int countdownValue READ countdownValue WRITE setCountdownValue NOTIFY countdownValueChanged)
  Q_PROPERTY(qreal numberScale READ numberScale NOTIFY advanced)
  Q_PROPERTY(qreal opacity READ opacity NOTIFY advanced)
  Q_PROPERTY(qreal ringProgress READ ringProgress NOTIFY advanced)
  Q_PROPERTY(qreal pulseScale READ pulseScale NOTIFY advanced)

 public:
  explicit CountdownAnimator(QObject* parent = nullptr);

  [[nodiscard]] int countdownValue() const { return countdownValue_.value_or(0); }
  /// The first value only sets the scene; every further one moves it.
  void setCountdownValue(int value);
  [[nodiscard]] qreal numberScale() const { return visibly(motion_.scale()); }
  [[nodiscard]] qreal opacity() const { return visibly(motion_.opacity()); }
  [[nodiscard]] qreal ringProgress() const { return motion_.ringProgress(); }
  [[nodiscard]] qreal pulseScale() const { return motion_.pulseScale(); }

 signals:
  void countdownValueChanged();
  void advanced();

 private:
  /// A spring comes to rest without end; what cannot be seen of it need not be drawn.
  [[nodiscard]] static qreal visibly(double value) { return std::round(value * 500.0) / 500.0; }
  [[nodiscard]] TimeInterval now() const;
  void advance();

  std::optional<int> countdownValue_;
  QElapsedTimer elapsed_;
  QTimer frames_;
  CountdownMotion motion_{TimeInterval{0.0}};
};

}  // namespace lunevra
