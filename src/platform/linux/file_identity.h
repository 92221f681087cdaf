#pragma once

#include <cstdint>
#include <filesystem>
#include <sys/types.h>

namespace lunevra {

/// Which file a path names, and a mark that changes with its content. All zero: there is none.
struct FileIdentity {
  dev_t device = 0;
  ino_t inode = 0;
  off_t size = 0;
  std::int64_t modifiedNanoseconds = 0;

  friend bool operator==(const FileIdentity&, const FileIdentity&) = default;
  [[nodiscard]] bool isSameFile(const FileIdentity& other) const {
    return device == other.device && inode == other.inode;
  }
  [[nodiscard]] bool exists() const { return inode != 0; }
};

/// About a microsecond each, and cheap enough to ask before every use of a file.
[[nodiscard]] FileIdentity identifyFile(const std::filesystem::path& path);
/// Of a symbolic link itself.
[[nodiscard]] FileIdentity identifyLink(const std::filesystem::path& path);

}  // namespace lunevra
