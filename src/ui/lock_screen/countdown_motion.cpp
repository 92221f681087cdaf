#include "ui/lock_screen/countdown_motion.h"

#include <algorithm>
#include <cmath>

#include "ui/lock_screen/ease_in_out.h"

namespace lunevra {
namespace {

constexpr double countdownStart = 3.0;
constexpr TimeInterval returnDelay{0.15};
constexpr TimeInterval drainTime{1.0};
constexpr double dippedScale = 0.85;
constexpr double greatestPulse = 1.08;

constexpr SpringTiming appearance{TimeInterval{0.5}, 0.7};
constexpr SpringTiming dip{TimeInterval{0.3}, 0.5};
constexpr SpringTiming springBack{TimeInterval{0.3}, 0.6};

}  // namespace

CountdownMotion::CountdownMotion(TimeInterval now) : appeared_(now), now_(now), ringStart_(now) {
  scale_.setTarget(1.0, appearance, now);
  opacity_.setTarget(1.0, appearance, now);
}

void CountdownMotion::valueChanged(std::int64_t value, TimeInterval now) {
  advance(now);
  scale_.setTarget(dippedScale, dip, now);
  returnsOfScale_.push_back(now + returnDelay);
  const double drawn = (now - ringStart_) / drainTime;
  ringFrom_ += (ringTo_ - ringFrom_) * std::clamp(drawn, 0.0, 1.0);
  ringTo_ = static_cast<double>(value) / countdownStart;
  ringStart_ = now;
}

void CountdownMotion::advance(TimeInterval now) {
  now_ = now;
  while (!returnsOfScale_.empty() && returnsOfScale_.front() <= now) {
    scale_.setTarget(1.0, springBack, returnsOfScale_.front());
    returnsOfScale_.pop_front();
  }
}

double CountdownMotion::opacity() const {
  return std::clamp(opacity_.value(now_), 0.0, 1.0);  // the spring overshoots, light cannot
}

double CountdownMotion::ringProgress() const {
  const double drawn = std::clamp((now_ - ringStart_) / drainTime, 0.0, 1.0);
  return std::clamp(ringFrom_ + (ringTo_ - ringFrom_) * drawn, 0.0, 1.0);
}

double CountdownMotion::pulseScale() const {
  const double phase = std::fmod((now_ - appeared_).count(), 2.0);  // one second out, one back
  const double progress = easeInOut(phase < 1.0 ? phase : 2.0 - phase);
  return 1.0 + (greatestPulse - 1.0) * progress;
}

}  // namespace lunevra
