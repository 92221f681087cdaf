#pragma once

#include <cstdint>
#include <deque>

#include "platform/instant.h"
#include "ui/lock_screen/spring.h"

namespace lunevra {

/// How the countdown moves: the number's dip on every change, the draining ring and its breathing
/// outline. A pure function of the changes told to it; times are seconds on any steady base and
/// never go back.
class CountdownMotion {
 public:
  /// The screen appears at `now`, small and transparent, its ring full.
  explicit CountdownMotion(TimeInterval now);

  void valueChanged(std::int64_t value, TimeInterval now);

  /// Carries out what has come due by `now`; the values below are those of that moment.
  void advance(TimeInterval now);

  [[nodiscard]] double scale() const { return scale_.value(now_); }
  [[nodiscard]] double opacity() const;
  /// The part of the ring that is drawn, from 0 to 1.
  [[nodiscard]] double ringProgress() const;
  [[nodiscard]] double pulseScale() const;

 private:
  TimeInterval appeared_;
  TimeInterval now_;
  Spring scale_{0.5};
  Spring opacity_{0.0};
  std::deque<TimeInterval> returnsOfScale_;  // due times, in order
  double ringFrom_ = 1.0;
  double ringTo_ = 1.0;
  TimeInterval ringStart_;
};

}  // namespace lunevra
