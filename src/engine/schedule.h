#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "platform/calendar.h"

namespace lunevra {

/// One of the four numbers of the schedule: where it is kept, and what it may hold.
struct ScheduleField {
  std::string_view key;
  std::int64_t defaultValue;
  std::int64_t greatest;

  /// A value outside 0…greatest, which only a foreign program can have stored, counts as absent.
  /// So no number, however large, can stretch a night beyond its wake time.
  [[nodiscard]] std::int64_t sanitised(std::int64_t value) const {
    return value >= 0 && value <= greatest ? value : defaultValue;
  }
};

/// The nightly window, in whole hours and minutes of the wall clock.
struct Schedule {
  std::int64_t blockStartHour = 22;
  std::int64_t blockStartMinute = 0;
  std::int64_t wakeHour = 6;
  std::int64_t wakeMinute = 0;

  friend bool operator==(const Schedule&, const Schedule&) = default;
};

/// Whether the instant's minute of the day lies from bedtime (inside) to wake time (outside),
/// across midnight when wake time is the earlier of the two. Equal times make an empty window.
[[nodiscard]] bool isWithinBlockingWindow(const Schedule& schedule, const Calendar& calendar,
                                          Instant instant);

/// The first wake time strictly after `instant`; `instant` itself if the calendar cannot tell.
[[nodiscard]] Instant nextWakeDate(const Schedule& schedule, const Calendar& calendar,
                                   Instant instant);

/// For example "6:00 AM"; hour 0 shows as 12.
[[nodiscard]] std::string formatTime12Hour(std::int64_t hour, std::int64_t minute);

}  // namespace lunevra
