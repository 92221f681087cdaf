#include "platform/foundation/zoned_calendar.h"

#include <cmath>
#include <date/date.h>
#include <date/tz.h>

#include "platform/localized_error.h"

namespace lunevra {
namespace {

using std::chrono::seconds;

// Beyond these years the civil calendar's arithmetic would overflow.
constexpr double furthestSeconds = 9e11;
constexpr std::int64_t furthestYear = 29000;

std::optional<date::sys_seconds> wholeSeconds(Instant instant) {
  if (!(std::fabs(instant.secondsSince1970) < furthestSeconds)) return std::nullopt;
  return date::sys_seconds{
      seconds{static_cast<std::int64_t>(std::floor(instant.secondsSince1970))}};
}

DateComponents split(date::local_seconds local) {
  const auto day = date::floor<date::days>(local);
  const date::year_month_day ymd{day};
  const date::hh_mm_ss time{local - day};
  return {.year = static_cast<int>(ymd.year()),
          .month = static_cast<int>(static_cast<unsigned>(ymd.month())),
          .day = static_cast<int>(static_cast<unsigned>(ymd.day())),
          .hour = static_cast<int>(time.hours().count()),
          .minute = static_cast<int>(time.minutes().count()),
          .second = static_cast<int>(time.seconds().count())};
}

std::optional<date::local_seconds> join(const DateComponents& components) {
  if (std::abs(components.year) > furthestYear || components.month < 1 || components.day < 1)
    return std::nullopt;
  const auto ymd =
      date::year{static_cast<int>(components.year)} / components.month / components.day;
  if (!ymd.ok()) return std::nullopt;
  return date::local_days{ymd} + std::chrono::hours{components.hour} +
         std::chrono::minutes{components.minute} + seconds{components.second};
}

}  // namespace

/// A zone of the database with the stretch of constant offset that was asked for last.
class ZonedCalendar::Zone {
 public:
  explicit Zone(const date::time_zone& zone) : zone_(zone) {}

  [[nodiscard]] date::local_seconds toLocal(date::sys_seconds time) {
    if (time < info_.begin || time >= info_.end) info_ = zone_.get_info(time);
    return date::local_seconds{time.time_since_epoch() + info_.offset};
  }

  [[nodiscard]] date::sys_seconds toInstant(date::local_seconds local) const {
    const auto info = zone_.get_info(local);
    if (info.result == date::local_info::nonexistent) return info.first.end;
    const auto& stretch = info.result == date::local_info::ambiguous ? info.second : info.first;
    return date::sys_seconds{local.time_since_epoch() - stretch.offset};
  }

 private:
  const date::time_zone& zone_;
  date::sys_info info_{};
};

ZonedCalendar::ZonedCalendar(const std::string& zoneName) try
    : zone_(std::make_unique<Zone>(*date::locate_zone(zoneName))) {
} catch (const std::runtime_error&) {
  throw LocalizedError("unknown time zone " + zoneName);
}

ZonedCalendar::~ZonedCalendar() = default;

std::optional<DateComponents> ZonedCalendar::components(Instant instant) const {
  const auto time = wholeSeconds(instant);
  if (!time) return std::nullopt;
  return split(zone_->toLocal(*time));
}

std::optional<Instant> ZonedCalendar::instant(const DateComponents& components) const {
  const auto local = join(components);
  if (!local) return std::nullopt;
  return Instant{static_cast<double>(zone_->toInstant(*local).time_since_epoch().count())};
}

std::optional<Instant> ZonedCalendar::addingDays(Instant instant, int days) const {
  const auto time = wholeSeconds(instant);
  if (!time) return std::nullopt;
  const auto fraction =
      instant.secondsSince1970 - static_cast<double>(time->time_since_epoch().count());
  const auto moved = zone_->toInstant(zone_->toLocal(*time) + date::days{days});
  return Instant{static_cast<double>(moved.time_since_epoch().count()) + fraction};
}

}  // namespace lunevra
