#include "rehearsal/world_text.h"

#include <array>
#include <charconv>
#include <cmath>
#include <cstdio>
#include <variant>

namespace lunevra::rehearsal {
namespace {

std::string secondsText(Instant instant) {
  return "@" + describe(instant.secondsSince1970);  // beyond the calendar
}

std::string dateText(const DateComponents& date) {
  std::array<char, 48> text{};
  std::snprintf(text.data(), text.size(), "%04lld-%02d-%02d %02d:%02d:%02d",
                static_cast<long long>(date.year), date.month, date.day, date.hour, date.minute,
                date.second);
  return text.data();
}

struct Rounded {
  Instant second;
  int milliseconds;
};

Rounded toMilliseconds(Instant instant) {
  const double total = std::round(instant.secondsSince1970 * 1000.0);
  const double second = std::floor(total / 1000.0);
  return {{second}, static_cast<int>(total - second * 1000.0)};
}

std::string fraction(int milliseconds) {
  std::array<char, 8> text{};
  std::snprintf(text.data(), text.size(), ".%03d", milliseconds);
  return text.data();
}

}  // namespace

std::string describe(const std::string& text) {
  std::string quoted = "\"";
  for (const char character : text) {
    if (character == '"' || character == '\\') quoted += '\\';
    quoted += character;
  }
  return quoted + "\"";
}

std::string describe(double number) {
  constexpr double exactWholeNumbers = 9007199254740992.0;
  if (number == std::floor(number) && std::fabs(number) <= exactWholeNumbers)
    return std::to_string(static_cast<long long>(number));
  std::array<char, 64> text{};
  const auto result = std::to_chars(text.data(), text.data() + text.size(), number);
  return {text.data(), result.ptr};
}

std::string describe(std::optional<Instant> instant, const Calendar& calendar) {
  if (!instant) return "none";
  const auto [second, milliseconds] = toMilliseconds(*instant);
  const auto date = calendar.components(second);
  if (!date) return secondsText(*instant);
  return dateText(*date) + (milliseconds == 0 ? "" : fraction(milliseconds));
}

std::string describe(const std::optional<StoredValue>& value, const Calendar& calendar) {
  struct Describer {
    const Calendar& calendar;
    std::string operator()(std::int64_t number) const { return std::to_string(number); }
    std::string operator()(bool flag) const { return flag ? "yes" : "no"; }
    std::string operator()(double number) const { return describe(number); }
    std::string operator()(Instant instant) const {
      return describe(std::optional(instant), calendar);
    }
    std::string operator()(const std::string& text) const { return describe(text); }
    std::string operator()(const std::vector<std::string>& texts) const {
      std::string joined;
      for (const auto& text : texts) joined += (joined.empty() ? "" : " ") + describe(text);
      return joined;
    }
  };
  return value ? std::visit(Describer{calendar}, *value) : "none";
}

std::string timestamp(Instant instant, const Calendar& calendar) {
  const auto [second, milliseconds] = toMilliseconds(instant);
  const auto date = calendar.components(second);
  return (date ? dateText(*date) : secondsText(second)) + fraction(milliseconds);
}

}  // namespace lunevra::rehearsal
