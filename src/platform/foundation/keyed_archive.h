#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "platform/stored_value.h"

namespace lunevra {

/// One object taken apart for another process: the name of its class, and its values under their
/// keys in the order in which they were encoded.
class KeyedArchive {
 public:
  using Entry = std::pair<std::string, StoredValue>;

  explicit KeyedArchive(std::string className) : className_(std::move(className)) {}

  [[nodiscard]] const std::string& className() const { return className_; }
  [[nodiscard]] const std::vector<Entry>& entries() const { return entries_; }

  /// A key is encoded once; nothing is written for a date that is absent.
  void encodeFlag(std::string_view key, bool value);
  void encodeInteger(std::string_view key, std::int64_t value);
  void encodeDate(std::string_view key, const std::optional<Instant>& value);
  void encode(std::string_view key, StoredValue value);

  /// What is missing or of another type reads as no, as 0, as absent.
  [[nodiscard]] bool decodeFlag(std::string_view key) const;
  [[nodiscard]] std::int64_t decodeInteger(std::string_view key) const;
  [[nodiscard]] std::optional<Instant> decodeDate(std::string_view key) const;

 private:
  template <class Value>
  [[nodiscard]] std::optional<Value> find(std::string_view key) const;

  std::string className_;
  std::vector<Entry> entries_;
};

}  // namespace lunevra
