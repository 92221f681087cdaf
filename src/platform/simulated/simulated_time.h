#pragma once

#include <chrono>
#include <cstddef>
#include <deque>
#include <functional>
#include <utility>

#include "platform/clock.h"
#include "platform/foundation/timer_queue.h"
#include "platform/run_loop.h"

namespace lunevra {

/// A wall clock and a run loop on virtual time, which passes only when told to. Timers fire exactly
/// when due, and after each one the main queue is emptied.
class SimulatedTime final : public Clock, public RunLoop {
 public:
  using Duration = std::chrono::milliseconds;

  [[nodiscard]] Instant now() const override;
  [[nodiscard]] Registration scheduleRepeating(std::chrono::milliseconds interval,
                                               std::chrono::milliseconds tolerance,
                                               std::function<void()> fire) override;
  void after(std::chrono::milliseconds delay, std::function<void()> work) override;
  void async(std::function<void()> work) override;

  /// Sets the wall clock, to whole milliseconds; running timers keep their intervals.
  void setWallClock(Instant instant);
  /// Time passes; every timer due by its end has fired.
  void pass(Duration duration);
  /// The wall clock goes on and no timer does.
  void sleep(Duration duration);
  /// Runs what waits on the main queue, and what that adds.
  void drainMainQueue();
  /// What a process takes with it when it ends: its timers and its queue.
  void dropProcess();

  /// How long the computer has been awake.
  [[nodiscard]] Duration uptime() const { return std::chrono::duration_cast<Duration>(uptime_); }
  [[nodiscard]] std::size_t repeatingTimers() const { return timers_.repeatingCount(); }
  /// Called whenever a turn of the run loop is over.
  void setTurnObserver(std::function<void()> observer) { turnEnded_ = std::move(observer); }

 private:
  TimerQueue timers_;
  TimerQueue::Time uptime_{};
  Duration wallAtUptimeZero_{};
  std::deque<std::function<void()>> mainQueue_;
  std::function<void()> turnEnded_ = [] {};
};

}  // namespace lunevra
