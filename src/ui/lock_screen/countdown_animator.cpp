#include "ui/lock_screen/countdown_animator.h"

namespace lunevra {
namespace {

constexpr int frameMilliseconds = 16;

}  // namespace

CountdownAnimator::CountdownAnimator(QObject* parent) : QObject(parent) {
  elapsed_.start();
  frames_.setTimerType(Qt::PreciseTimer);
  frames_.setInterval(frameMilliseconds);
  connect(&frames_, &QTimer::timeout, this, &CountdownAnimator::advance);
  frames_.start();
}

void CountdownAnimator::setCountdownValue(int value) {
  if (countdownValue_ == value) return;
  if (countdownValue_) motion_.valueChanged(value, now());
  countdownValue_ = value;
  emit countdownValueChanged();
}

TimeInterval CountdownAnimator::now() const {
  return TimeInterval{static_cast<double>(elapsed_.nsecsElapsed()) * 1e-9};
}

void CountdownAnimator::advance() {
  motion_.advance(now());
  emit advanced();
}

}  // namespace lunevra
