#pragma once

#include <chrono>
#include <filesystem>
#include <optional>

#include "platform/linux/unique_descriptor.h"

namespace lunevra {

/// Makes the folder and what leads to it, for its owner's eyes only; false if there is none after.
bool makePrivateFolder(const std::filesystem::path& folder);

/// Held by the process that is replacing files in a folder.
class FolderLock {
 public:
  /// Nothing if another process keeps it for longer than `patience`, or the folder is not there.
  [[nodiscard]] static std::optional<FolderLock> acquire(const std::filesystem::path& folder,
                                                         std::chrono::milliseconds patience);

 private:
  explicit FolderLock(UniqueDescriptor folder) : folder_(std::move(folder)) {}

  UniqueDescriptor folder_;
};

}  // namespace lunevra
