#include "platform/stored_value_conversion.h"

#include <cmath>

#include "platform/user_defaults.h"

namespace lunevra {
namespace {

template <class T>
std::optional<T> exactly(const std::optional<StoredValue>& value) {
  if (value)
    if (const auto* held = std::get_if<T>(&*value)) return *held;
  return std::nullopt;
}

}  // namespace

std::optional<std::int64_t> asInteger(const std::optional<StoredValue>& value) {
  return exactly<std::int64_t>(value);
}

std::optional<bool> asFlag(const std::optional<StoredValue>& value) {
  return exactly<bool>(value);
}

std::optional<double> asNumber(const std::optional<StoredValue>& value) {
  if (const auto integer = asInteger(value)) return static_cast<double>(*integer);
  const auto number = exactly<double>(value);
  return number && std::isfinite(*number) ? number : std::nullopt;
}

std::optional<Instant> asDate(const std::optional<StoredValue>& value) {
  const auto date = exactly<Instant>(value);
  return date && std::isfinite(date->secondsSince1970) ? date : std::nullopt;
}

std::optional<std::vector<std::string>> asTexts(const std::optional<StoredValue>& value) {
  return exactly<std::vector<std::string>>(value);
}

std::optional<std::int64_t> UserDefaults::integer(std::string_view key) const {
  return asInteger(object(key));
}

std::optional<bool> UserDefaults::flag(std::string_view key) const {
  return asFlag(object(key));
}

std::optional<double> UserDefaults::number(std::string_view key) const {
  return asNumber(object(key));
}

std::optional<Instant> UserDefaults::date(std::string_view key) const {
  return asDate(object(key));
}

std::optional<std::vector<std::string>> UserDefaults::texts(std::string_view key) const {
  return asTexts(object(key));
}

}  // namespace lunevra
