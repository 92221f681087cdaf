#include "soak/random_nights.h"

#include <algorithm>
#include <chrono>
#include <cmath>

#include "rehearsal/world_text.h"

namespace lunevra::soak {
namespace {

using rehearsal::Night;
using namespace std::chrono_literals;

const std::vector<std::string> zones{"UTC", "Europe/Berlin", "America/New_York",
                                     "Australia/Lord_Howe", "Asia/Kathmandu"};
// A day of each kind of change of the clocks is near.
const std::vector<std::string> startDates{"2026-11-22 20:00", "2026-03-27 21:50",
                                          "2026-10-23 12:00", "2026-10-30 23:30",
                                          "2026-04-03 05:00"};

std::string text(Instant instant, Night& night) {
  const Instant whole{std::floor(instant.secondsSince1970)};
  return rehearsal::describe(std::optional(whole), night.computer().calendar);
}

}  // namespace

int RandomNights::number(int least, int greatest) {
  return std::uniform_int_distribution(least, greatest)(generator_);
}

const std::string& RandomNights::oneOf(const std::vector<std::string>& choices) {
  return choices[static_cast<std::size_t>(number(0, static_cast<int>(choices.size()) - 1))];
}

std::vector<std::string> RandomNights::beginning() {
  isKeyInserted_ = false;
  std::vector<std::string> lines{"zone " + oneOf(zones), "clock " + oneOf(startDates)};
  if (number(1, 8) == 1) lines.emplace_back("suite refused");
  const std::vector<std::string> drives{
      "display A 0 0 1920 1080",
      // The fingerprint of the secret on the first drive; the second drive's is another.
      "keychain 709e80c88487a2411e1ee4dfb9f22a861492d20c4765150c0c794abd70f8147c",
      "volume KEY /Volumes/KEY", "keyfile KEY AAAA", "volume KEY off",
      "volume OTHER /Volumes/OTHER", "keyfile OTHER BBBB", "launch"};
  lines.insert(lines.end(), drives.begin(), drives.end());
  return lines;
}

std::string RandomNights::next(Night& night) {
  if (!night.isRunning() && number(1, 3) > 1) return "launch";
  const int kind = number(1, 100);
  if (kind <= 55) return waiting(night);
  if (kind <= 67) return person();
  if (kind <= 74) return drive();
  if (kind <= 84) return otherMachine(night);
  if (kind <= 97) return computer();
  return clockJump(night);
}

std::string RandomNights::time() {
  const auto twoDigits = [](int value) { return (value < 10 ? "0" : "") + std::to_string(value); };
  return twoDigits(number(0, 23)) + ":" + twoDigits(5 * number(0, 11));
}

/// Mostly about the times at which something is due.
std::string RandomNights::waiting(Night& night) {
  switch (number(1, 6)) {
    case 1:
      return "pass " + std::to_string(number(1, 4000)) + "ms";
    case 2:
      return "pass " + std::to_string(number(1, 20)) + "s";
    case 3:
      return "pass " + std::to_string(number(1, 90)) + "m";
    case 4:
      return "sleep " + std::to_string(number(1, 600)) + "m";
    case 5:
      return "pass " + std::to_string(number(1, 5)) + "h";
    default:
      break;
  }
  const auto end = night.latch().until();
  const auto now = night.computer().time.now();
  if (!end || *end <= now || *end - now > 20h) return "until " + time();
  const auto rest = std::chrono::ceil<std::chrono::milliseconds>(*end - now);
  return "pass " + std::to_string(std::max(1L, rest.count() + number(-4000, 4000))) + "ms";
}

std::string RandomNights::person() {
  switch (number(1, 9)) {
    case 1:
      return "schedule " + time() + " " + time();
    case 2:
      return "enabled no";
    case 3:
    case 4:
      return "enabled yes";
    case 5:
      return number(1, 4) == 1 ? "commit " + oneOf({"oneDay", "threeDays"}) : "key down";
    case 6:
      return "create-key " + oneOf({"/Volumes/KEY", "cancel"});
    case 7:
      return oneOf({"firewall yes", "firewall no", "install-helper", "install-agent"});
    default:
      return "quit";
  }
}

std::string RandomNights::drive() {
  const int kind = number(1, 4);
  if (kind == 1) return "volume OTHER " + oneOf({"off", "/Volumes/OTHER", "/Volumes/OTHER remote"});
  if (kind == 2) return "check-key";
  isKeyInserted_ = !isKeyInserted_;
  return isKeyInserted_ ? "volume KEY /Volumes/KEY" : "volume KEY off";
}

std::string RandomNights::otherMachine(Night& night) {
  const auto inHours = [&](int hours) {
    const auto instant = night.computer().time.now() + std::chrono::hours(hours);
    return rehearsal::describe(instant.secondsSince1970);
  };
  switch (number(1, 7)) {
    case 1:
      return "store cloud wakeHour integer " + std::to_string(number(0, 23));
    case 2:
      return "store cloud blockStartHour integer " + std::to_string(number(0, 23));
    case 3:
      return "store cloud scheduleEnabled flag " + oneOf({"yes", "no", "yes"});
    case 4:
      return "store cloud lockEnabled flag " + oneOf({"yes", "no"});
    case 5:
      return "store cloud lockEndDate double " + inHours(number(-30, 30));
    case 6:
      return "store cloud " + oneOf({"wakeHour", "blockStartMinute", "scheduleEnabled"}) + " " +
             oneOf({"integer 9000000000", "integer -1", "text \"six\"", "double 1e300", "none"});
    default:
      return "store group activeMacNightLockUntil " + oneOf({"none", "text \"x\""});
  }
}

std::string RandomNights::computer() {
  switch (number(1, 10)) {
    case 1:
    case 2:
      return "kill";
    case 3:
      return "display B " + oneOf({"off", "1920 0 1280 1024", "0 1080 800 600"});
    case 4:
      return "display A " + oneOf({"off", "0 0 1920 1080", "0 0 1080 1920"});
    case 5:
      return "screens-changed";
    case 6:
      return oneOf({"session-active", "space-changed", "resigned-active"});
    case 7:
      return "zone " + oneOf(zones);
    case 8:
      return "helper " + oneOf({"ok", "silent", "unreachable", "fails", "breaks \"gone\""});
    case 9:
      return oneOf({"service agent 0", "service agent 1", "service daemon 1"});
    default:
      return number(1, 5) == 1 ? "power-off" : "key flags";
  }
}

std::string RandomNights::clockJump(Night& night) {
  const auto now = night.computer().time.now();
  const std::chrono::minutes furthest = number(1, 4) == 1 ? 72h : 3h;
  const auto minutes = static_cast<int>(furthest.count());
  return "clock " + text(now + std::chrono::minutes(number(-minutes, minutes)), night);
}

}  // namespace lunevra::soak
