#include "engine/commitment.h"

#include <cmath>

namespace lunevra {
namespace {

int lockDurationDays(LockDuration duration) {
  switch (duration) {
    case LockDuration::oneDay:
      return 1;
    case LockDuration::threeDays:
      return 3;
    case LockDuration::oneWeek:
      return 7;
    case LockDuration::twoWeeks:
      return 14;
    case LockDuration::oneMonth:
      return 30;
  }
  return 0;
}

}  // namespace

std::string_view lockDurationText(LockDuration duration) {
  switch (duration) {
    case LockDuration::oneDay:
      return "1 Day";
    case LockDuration::threeDays:
      return "3 Days";
    case LockDuration::oneWeek:
      return "1 Week";
    case LockDuration::twoWeeks:
      return "2 Weeks";
    case LockDuration::oneMonth:
      return "1 Month";
  }
  return {};
}

Instant commitmentEnd(LockDuration duration, const Calendar& calendar, Instant now) {
  return calendar.addingDays(now, lockDurationDays(duration)).value_or(now);
}

std::string commitmentRemainingText(std::optional<Instant> end, Instant now) {
  constexpr std::int64_t minute = 60;
  constexpr std::int64_t hour = 60 * minute;
  constexpr std::int64_t daysFrom = 25 * hour;
  constexpr double longestCount = 1e15;  // keeps an absurd stored end within whole seconds

  if (!end) return {};
  const double remaining = (*end - now).count();
  if (remaining <= 0.0) return "Expired";
  const auto seconds = static_cast<std::int64_t>(std::fmin(remaining, longestCount));
  const auto hours = seconds / hour;
  const auto minutes = std::to_string(seconds % hour / minute) + "m";
  if (seconds >= daysFrom)
    return std::to_string(hours / 24) + "d " + std::to_string(hours % 24) + "h";
  return seconds >= hour ? std::to_string(hours) + "h " + minutes : minutes;
}

}  // namespace lunevra
