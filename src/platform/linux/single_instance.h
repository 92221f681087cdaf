#pragma once

#include <filesystem>
#include <optional>
#include <span>

#include "platform/linux/unique_descriptor.h"
#include "platform/log.h"

namespace lunevra {

/// The right to be the one engine of this person, held until it is destroyed or the process ends;
/// child processes do not inherit it.
class SingleInstance {
 public:
  /// Locks `lunevra.lock` in the first folder that takes it. Nothing if another process holds the
  /// lock. Where no folder takes a lock the right is granted: two locks disturb nobody's night,
  /// none would. Never waits.
  [[nodiscard]] static std::optional<SingleInstance> tryAcquire(
      std::span<const std::filesystem::path> folders, Log& log);

 private:
  explicit SingleInstance(UniqueDescriptor file) : file_(std::move(file)) {}

  UniqueDescriptor file_;
};

}  // namespace lunevra
