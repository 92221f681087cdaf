#pragma once

#include <chrono>
#include <filesystem>
#include <map>
#include <mutex>
#include <optional>
#include <string>
#include <string_view>

#include "platform/linux/defaults_disk.h"
#include "platform/user_defaults.h"

namespace lunevra {

/// A domain in one SQLite file. What the disk refuses is held in memory, wins over the disk, and
/// goes there as soon as the disk takes it. A read costs microseconds, a call waits for another
/// process a quarter of a second at the very most. Setting an equal value writes nothing.
class SqliteUserDefaults : public UserDefaults {
 public:
  /// The log outlives the domain.
  SqliteUserDefaults(std::filesystem::path file, Log& log);

  [[nodiscard]] std::optional<StoredValue> object(std::string_view key) const override;
  void set(std::string_view key, const StoredValue& value) override;
  void remove(std::string_view key) override;

 private:
  using Held = std::map<std::string, std::optional<StoredValue>, std::less<>>;

  void change(std::string_view key, const std::optional<StoredValue>& value);
  void writeHeld() const;

  // Reading may find the disk changed or back again.
  mutable std::mutex mutex_;
  mutable DefaultsDisk disk_;
  mutable Held held_;
  mutable std::chrono::steady_clock::time_point retryAt_{};
};

}  // namespace lunevra
