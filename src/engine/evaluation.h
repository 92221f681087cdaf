#pragma once

#include "engine/blocking_state.h"

namespace lunevra {

/// What an evaluation of the schedule knows about this moment.
struct NightSituation {
  bool isReleaseInForce = false;  ///< a physical key has released this night
  bool isNightLatched = false;    ///< a started night ends in the future
  bool isInWindow = false;        ///< now lies between bedtime and wake time
  bool isEnabled = false;         ///< the nightly schedule is switched on
  BlockingState state = BlockingState::idle;
};

enum class EvaluationStep {
  none,
  endLockForOverride,
  beginCountdown,
  latchNight,
  latchNightAndBeginCountdown,
  returnToIdle,
};

struct Evaluation {
  bool isBlockingTime = false;
  EvaluationStep step = EvaluationStep::none;

  friend bool operator==(const Evaluation&, const Evaluation&) = default;
};

/// The whole decision about a night. A release comes first; then a night that has started runs to
/// its end whatever the schedule says; only then do window and switch count.
[[nodiscard]] constexpr Evaluation evaluate(const NightSituation& now) {
  const bool isIdle = now.state == BlockingState::idle;
  if (now.isReleaseInForce)
    return {false, isIdle ? EvaluationStep::none : EvaluationStep::endLockForOverride};
  if (now.isNightLatched)
    return {true, isIdle ? EvaluationStep::beginCountdown : EvaluationStep::none};
  if (now.isInWindow && now.isEnabled)
    return {true,
            isIdle ? EvaluationStep::latchNightAndBeginCountdown : EvaluationStep::latchNight};
  return {now.isInWindow, isIdle ? EvaluationStep::none : EvaluationStep::returnToIdle};
}

}  // namespace lunevra
