#pragma once

#include <filesystem>
#include <memory>
#include <optional>
#include <string>

#include "platform/calendar.h"
#include "platform/foundation/zoned_calendar.h"
#include "platform/linux/file_identity.h"
#include "platform/log.h"

namespace lunevra {

/// Where the computer says which time zone the person lives in; the first that names one counts.
struct ZoneSources {
  std::string environment;  // the value of TZ
  std::filesystem::path localtime = "/etc/localtime";
  std::filesystem::path timezone = "/etc/timezone";
};

/// The calendar in the person's zone. A zone changed while the program runs counts from the next
/// call on; one that nobody knows leaves the last good one in force (at first UTC). Costs two
/// lookups of file status a call. Main thread only; the log outlives it.
class SystemCalendar : public Calendar {
 public:
  SystemCalendar(ZoneSources sources, Log& log);

  [[nodiscard]] std::optional<DateComponents> components(Instant instant) const override;
  [[nodiscard]] std::optional<Instant> instant(const DateComponents& components) const override;
  [[nodiscard]] std::optional<Instant> addingDays(Instant instant, int days) const override;

 private:
  /// Null on a computer without any time-zone database.
  [[nodiscard]] const ZonedCalendar* current() const;
  void readZone() const;
  bool use(const std::string& zoneName) const;

  ZoneSources sources_;
  Log& log_;
  // Which zone is in force is found out when it is asked for.
  mutable FileIdentity localtime_;
  mutable FileIdentity timezone_;
  mutable bool isRead_ = false;
  mutable std::string zoneName_;
  mutable std::unique_ptr<ZonedCalendar> calendar_;
};

}  // namespace lunevra
