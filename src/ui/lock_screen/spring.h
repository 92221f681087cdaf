#pragma once

#include "platform/instant.h"

namespace lunevra {

/// How a spring behaves: the period it would swing with undamped, and its damping as a fraction of
/// the critical one (1 and above never overshoot).
struct SpringTiming {
  TimeInterval response{0.5};
  double dampingFraction = 1.0;
};

/// A value that a damped spring carries to a target. Times are seconds on any steady base; they
/// never go back. A new target takes over position and velocity, so that nothing ever jumps.
class Spring {
 public:
  explicit Spring(double value) : target_(value) {}

  void setTarget(double target, SpringTiming timing, TimeInterval now);

  [[nodiscard]] double target() const { return target_; }
  [[nodiscard]] double value(TimeInterval now) const { return target_ + state(now).offset; }
  [[nodiscard]] double velocity(TimeInterval now) const { return state(now).velocity; }

 private:
  struct State {
    double offset = 0.0;    // from the target
    double velocity = 0.0;  // a second
  };
  [[nodiscard]] State state(TimeInterval now) const;

  double target_;
  SpringTiming timing_;
  TimeInterval start_{};
  State initial_;
};

}  // namespace lunevra
