#include "platform/linux/system_calendar.h"

#include <exception>
#include <fstream>

namespace lunevra {
namespace {

/// "Europe/Berlin" from any path into a time-zone database, else the text as it is.
std::string zoneInPath(std::string path) {
  constexpr std::string_view database = "zoneinfo/";
  const auto found = path.rfind(database);
  if (found != std::string::npos) path.erase(0, found + database.size());
  for (const std::string_view variant : {"posix/", "right/"})
    if (path.starts_with(variant)) path.erase(0, variant.size());
  return path;
}

std::string zoneOfEnvironment(const std::string& value) {
  return zoneInPath(value.starts_with(':') ? value.substr(1) : value);
}

std::string zoneOfLink(const std::filesystem::path& link) {
  std::error_code error;
  auto target = std::filesystem::read_symlink(link, error).string();
  if (!error && target.find("zoneinfo/") == std::string::npos)
    target = std::filesystem::canonical(link, error).string();
  return error || target.find("zoneinfo/") == std::string::npos ? "" : zoneInPath(target);
}

std::string zoneOfFile(const std::filesystem::path& file) {
  std::ifstream stream(file);
  std::string name;
  stream >> name;
  return name;
}

}  // namespace

SystemCalendar::SystemCalendar(ZoneSources sources, Log& log)
    : sources_(std::move(sources)), log_(log) {}

std::optional<DateComponents> SystemCalendar::components(Instant instant) const {
  const auto* calendar = current();
  return calendar != nullptr ? calendar->components(instant) : std::nullopt;
}

std::optional<Instant> SystemCalendar::instant(const DateComponents& components) const {
  const auto* calendar = current();
  return calendar != nullptr ? calendar->instant(components) : std::nullopt;
}

std::optional<Instant> SystemCalendar::addingDays(Instant instant, int days) const {
  const auto* calendar = current();
  return calendar != nullptr ? calendar->addingDays(instant, days) : std::nullopt;
}

const ZonedCalendar* SystemCalendar::current() const {
  const auto localtime = identifyLink(sources_.localtime);
  const auto timezone = identifyFile(sources_.timezone);
  if (!isRead_ || localtime != localtime_ || timezone != timezone_) {
    isRead_ = true;
    localtime_ = localtime;
    timezone_ = timezone;
    readZone();
  }
  return calendar_.get();
}

void SystemCalendar::readZone() const {
  if (use(zoneOfEnvironment(sources_.environment)) || use(zoneOfLink(sources_.localtime)) ||
      use(zoneOfFile(sources_.timezone)))
    return;
  if (calendar_ != nullptr)
    log_.line("Lunevra: the computer names no known time zone, staying with " + zoneName_);
  else if (use("UTC"))
    log_.line("Lunevra: the computer names no known time zone, going on with UTC");
  else
    log_.line("Lunevra: there is no time-zone database");
}

bool SystemCalendar::use(const std::string& zoneName) const {
  if (zoneName.empty()) return false;
  if (calendar_ != nullptr && zoneName == zoneName_) return true;
  try {
    calendar_ = std::make_unique<ZonedCalendar>(zoneName);
  } catch (const std::exception&) {
    return false;  // the next source may name a known one
  }
  zoneName_ = zoneName;
  return true;
}

}  // namespace lunevra
