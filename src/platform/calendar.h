#pragma once

#include <cstdint>
#include <optional>

#include "platform/instant.h"

namespace lunevra {

/// A civil date and wall time in the calendar's time zone.
struct DateComponents {
  std::int64_t year = 1970;
  int month = 1;
  int day = 1;
  int hour = 0;
  int minute = 0;
  int second = 0;

  friend bool operator==(const DateComponents&, const DateComponents&) = default;
};

/// The Gregorian calendar in the person's time zone as it is at the moment of each call.
/// Every operation answers nothing where an instant or a date is beyond what it can express.
class Calendar {
 public:
  virtual ~Calendar() = default;

  [[nodiscard]] virtual std::optional<DateComponents> components(Instant instant) const = 0;

  /// The instant at which the wall clock shows `components`. A wall time that is skipped gives the
  /// instant of the jump; one that comes twice gives its second occurrence, so that a night ending
  /// at such a time is over when it is over and its window does not open again.
  [[nodiscard]] virtual std::optional<Instant> instant(const DateComponents& components) const = 0;

  /// The same wall time `days` calendar days later (or earlier), across any change of offset.
  [[nodiscard]] virtual std::optional<Instant> addingDays(Instant instant, int days) const = 0;
};

}  // namespace lunevra
