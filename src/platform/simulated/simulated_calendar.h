#pragma once

#include <string>

#include "platform/foundation/zoned_calendar.h"

namespace lunevra {

/// The calendar of a person who may travel.
class SimulatedCalendar final : public Calendar {
 public:
  /// Throws LocalizedError for an unknown zone.
  void setZone(const std::string& name) { zoned_ = std::make_unique<ZonedCalendar>(name); }

  [[nodiscard]] std::optional<DateComponents> components(Instant instant) const override {
    return zoned_->components(instant);
  }
  [[nodiscard]] std::optional<Instant> instant(const DateComponents& components) const override {
    return zoned_->instant(components);
  }
  [[nodiscard]] std::optional<Instant> addingDays(Instant instant, int days) const override {
    return zoned_->addingDays(instant, days);
  }

 private:
  std::unique_ptr<ZonedCalendar> zoned_ = std::make_unique<ZonedCalendar>("UTC");
};

}  // namespace lunevra
