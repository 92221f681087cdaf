#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/stored_value.h"

namespace lunevra {

/// One domain of persistent settings on this machine, shared with other processes. A write is on
/// disk when the call returns; if the disk refuses it, the value still holds until the process ends
/// and one log line says so. No operation throws. Any thread.
///
/// The typed readers answer nothing for an absent key and for a value of another type; a number may
/// have been stored as an integer. A date or number that is not finite counts as absent.
class UserDefaults {
 public:
  virtual ~UserDefaults() = default;

  [[nodiscard]] virtual std::optional<StoredValue> object(std::string_view key) const = 0;
  virtual void set(std::string_view key, const StoredValue& value) = 0;
  virtual void remove(std::string_view key) = 0;

  [[nodiscard]] std::optional<std::int64_t> integer(std::string_view key) const;
  [[nodiscard]] std::optional<bool> flag(std::string_view key) const;
  [[nodiscard]] std::optional<double> number(std::string_view key) const;
  [[nodiscard]] std::optional<Instant> date(std::string_view key) const;
  [[nodiscard]] std::optional<std::vector<std::string>> texts(std::string_view key) const;
};

/// Opens the domains. What it hands out lives as long as it does.
class UserDefaultsDomains {
 public:
  virtual ~UserDefaultsDomains() = default;

  [[nodiscard]] virtual UserDefaults& standard() = 0;
  /// The domain shared by an app group, or null if the computer refuses it.
  [[nodiscard]] virtual UserDefaults* suite(std::string_view name) = 0;
};

}  // namespace lunevra
