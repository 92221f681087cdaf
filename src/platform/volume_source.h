#pragma once

#include <optional>
#include <string>
#include <vector>

#include "platform/localized_error.h"

namespace lunevra {

/// Yes/no resource values of a mounted volume; absent where the computer cannot tell.
struct VolumeTraits {
  std::optional<bool> isInternal;
  std::optional<bool> isLocal;
  std::optional<bool> isRootFileSystem;
};

/// The mounted volumes and the one small file on them that matters. Volumes are named by the path
/// of their root, without a trailing slash (the root file system is "/"). Every answer is of its
/// own moment; no operation blocks on a volume that does not answer. Main thread only.
class VolumeSource {
 public:
  virtual ~VolumeSource() = default;

  /// In the computer's listing order, hidden system mounts left out.
  [[nodiscard]] virtual std::vector<std::string> mountedVolumes() const = 0;
  /// Nothing if the values cannot be read.
  [[nodiscard]] virtual std::optional<VolumeTraits> traits(const std::string& volume) const = 0;
  /// Throws LocalizedError if the flag cannot be read; nothing if the volume has no such flag.
  [[nodiscard]] virtual std::optional<bool> isReadOnly(const std::string& volume) const = 0;
  [[nodiscard]] virtual std::optional<std::string> localizedName(
      const std::string& volume) const = 0;

  /// The whole regular file at `path`, or nothing if it is missing, unreadable or implausibly
  /// large.
  [[nodiscard]] virtual std::optional<std::string> readFile(const std::string& path) const = 0;
  /// Replaces the file in one step and returns once it is on the disk. Throws LocalizedError.
  virtual void writeFileAtomically(const std::string& path, const std::string& contents) = 0;
  /// Sets the file's hidden flag where the file system has one; failure is of no consequence.
  virtual void setHidden(const std::string& path) = 0;
};

}  // namespace lunevra
