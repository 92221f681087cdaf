#pragma once

#include <memory>
#include <string>

#include "platform/calendar.h"

namespace lunevra {

/// The Gregorian calendar in one IANA time zone. Main thread only.
class ZonedCalendar : public Calendar {
 public:
  /// Throws LocalizedError if the time-zone database does not know the name.
  explicit ZonedCalendar(const std::string& zoneName);
  ~ZonedCalendar() override;
  ZonedCalendar(const ZonedCalendar&) = delete;
  ZonedCalendar& operator=(const ZonedCalendar&) = delete;

  [[nodiscard]] std::optional<DateComponents> components(Instant instant) const override;
  [[nodiscard]] std::optional<Instant> instant(const DateComponents& components) const override;
  [[nodiscard]] std::optional<Instant> addingDays(Instant instant, int days) const override;

 private:
  class Zone;
  std::unique_ptr<Zone> zone_;
};

}  // namespace lunevra
