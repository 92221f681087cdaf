#pragma once

#include <functional>
#include <optional>
#include <string_view>

#include "platform/registration.h"
#include "platform/stored_value.h"

namespace lunevra {

/// A small key-value store that the person's machines share. One that is missing or out of reach
/// behaves as an empty one; no operation throws. Any thread.
class CloudKeyValueStore {
 public:
  virtual ~CloudKeyValueStore() = default;

  [[nodiscard]] virtual std::optional<StoredValue> object(std::string_view key) const = 0;
  virtual void set(std::string_view key, const StoredValue& value) = 0;

  /// Pushes pending writes on their way.
  virtual void synchronize() = 0;

  /// Tells `block`, on any thread, that another machine changed something. Own writes do not count.
  [[nodiscard]] virtual Registration observeExternalChanges(std::function<void()> block) = 0;
};

}  // namespace lunevra
