#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <optional>

#include "platform/registration.h"

namespace lunevra {

/// The timers of one run loop, on whatever monotonic time base its owner counts in. It keeps order
/// and grid; its owner decides when to wake up and fire. One thread only.
class TimerQueue {
 public:
  using Time = std::chrono::nanoseconds;

  [[nodiscard]] Registration addRepeating(Time now, Time interval, Time tolerance,
                                          std::function<void()> fire);
  void addOnce(Time due, std::function<void()> work);

  /// When the earliest timer is due.
  [[nodiscard]] std::optional<Time> nextDue() const;
  /// The latest moment to wake up that keeps every timer within its tolerance; all that are due by
  /// then share that wake-up.
  [[nodiscard]] std::optional<Time> latestWakeUp() const;
  /// Fires the earliest timer if it is due by `now`. A repeating one is next due at the first point
  /// of its grid after `now`.
  bool fireNextDue(Time now);

  [[nodiscard]] std::size_t repeatingCount() const;
  /// Forgets everything; registrations given out stay harmless.
  void clear();

 private:
  struct Timer {
    std::function<void()> fire;
    Time interval{};  // zero: fires once
    Time tolerance{};
    bool isCancelled = false;
  };
  // Timers due at the same moment fire in the order of their creation.
  using Order = std::pair<Time, std::uint64_t>;
  using Timers = std::map<Order, std::shared_ptr<Timer>>;

  std::shared_ptr<Timers> timers_ = std::make_shared<Timers>();
  std::uint64_t nextId_ = 0;
};

}  // namespace lunevra
