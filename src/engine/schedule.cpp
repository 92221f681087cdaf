#include "engine/schedule.h"

#include <optional>

namespace lunevra {
namespace {

constexpr std::int64_t minutesPerHour = 60;

std::optional<Instant> wakeTimeOnDayOf(Instant instant, const Schedule& schedule,
                                       const Calendar& calendar) {
  auto components = calendar.components(instant);
  if (!components) return std::nullopt;
  components->hour = static_cast<int>(schedule.wakeHour);
  components->minute = static_cast<int>(schedule.wakeMinute);
  components->second = 0;
  return calendar.instant(*components);
}

}  // namespace

bool isWithinBlockingWindow(const Schedule& schedule, const Calendar& calendar, Instant instant) {
  const auto components = calendar.components(instant);
  if (!components) return false;
  const auto now = components->hour * minutesPerHour + components->minute;
  const auto start = schedule.blockStartHour * minutesPerHour + schedule.blockStartMinute;
  const auto wake = schedule.wakeHour * minutesPerHour + schedule.wakeMinute;
  if (wake < start) return start <= now || now < wake;
  return start <= now && now < wake;
}

Instant nextWakeDate(const Schedule& schedule, const Calendar& calendar, Instant instant) {
  const auto candidate = wakeTimeOnDayOf(instant, schedule, calendar);
  if (!candidate) return instant;
  if (instant < *candidate) return *candidate;
  const auto nextDay = calendar.addingDays(*candidate, 1);
  if (!nextDay) return *candidate;
  // Where the clock skipped today's wake time, the candidate is later than that time; tomorrow's
  // must not inherit the shift.
  return wakeTimeOnDayOf(*nextDay, schedule, calendar).value_or(*nextDay);
}

std::string formatTime12Hour(std::int64_t hour, std::int64_t minute) {
  const auto shown = hour == 0 ? 12 : hour <= 12 ? hour : hour - 12;
  return std::to_string(shown) + (minute < 10 ? ":0" : ":") + std::to_string(minute) +
         (hour < 12 ? " AM" : " PM");
}

}  // namespace lunevra
