#include "platform/foundation/keyed_archive.h"

#include <algorithm>

namespace lunevra {

void KeyedArchive::encodeFlag(std::string_view key, bool value) {
  encode(key, value);
}

void KeyedArchive::encodeInteger(std::string_view key, std::int64_t value) {
  encode(key, value);
}

void KeyedArchive::encodeDate(std::string_view key, const std::optional<Instant>& value) {
  if (value) encode(key, *value);
}

void KeyedArchive::encode(std::string_view key, StoredValue value) {
  entries_.emplace_back(key, std::move(value));
}

bool KeyedArchive::decodeFlag(std::string_view key) const {
  return find<bool>(key).value_or(false);
}

std::int64_t KeyedArchive::decodeInteger(std::string_view key) const {
  return find<std::int64_t>(key).value_or(0);
}

std::optional<Instant> KeyedArchive::decodeDate(std::string_view key) const {
  return find<Instant>(key);
}

template <class Value>
std::optional<Value> KeyedArchive::find(std::string_view key) const {
  const auto entry = std::ranges::find(entries_, key, &Entry::first);
  if (entry == entries_.end()) return std::nullopt;
  const auto* const value = std::get_if<Value>(&entry->second);
  return value != nullptr ? std::optional(*value) : std::nullopt;
}

}  // namespace lunevra
