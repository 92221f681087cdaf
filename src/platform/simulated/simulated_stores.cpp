#include "platform/simulated/simulated_stores.h"

namespace lunevra {

std::optional<StoredValue> ValueMap::find(std::string_view key) const {
  const auto found = values_.find(key);
  return found == values_.end() ? std::nullopt : std::optional(found->second);
}

void ValueMap::set(std::string_view key, const StoredValue& value) {
  const auto found = values_.find(key);
  if (found != values_.end() && found->second == value) return;
  if (found == values_.end())
    values_.emplace(key, value);
  else
    found->second = value;
  onChange_();
}

void ValueMap::remove(std::string_view key) {
  const auto found = values_.find(key);
  if (found == values_.end()) return;
  values_.erase(found);
  onChange_();
}

}  // namespace lunevra
