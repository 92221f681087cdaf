#pragma once

#include <chrono>
#include <compare>

namespace lunevra {

/// A length of time in seconds, fractions included.
using TimeInterval = std::chrono::duration<double>;

/// A wall-clock instant: seconds since 1970-01-01 00:00:00 UTC, without leap seconds.
struct Instant {
  double secondsSince1970 = 0.0;

  friend constexpr bool operator==(const Instant&, const Instant&) = default;
  friend constexpr auto operator<=>(const Instant&, const Instant&) = default;
};

constexpr Instant operator+(Instant instant, TimeInterval interval) {
  return {instant.secondsSince1970 + interval.count()};
}

constexpr TimeInterval operator-(Instant later, Instant earlier) {
  return TimeInterval{later.secondsSince1970 - earlier.secondsSince1970};
}

}  // namespace lunevra
