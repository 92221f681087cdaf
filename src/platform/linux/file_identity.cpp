#include "platform/linux/file_identity.h"

#include <sys/stat.h>

namespace lunevra {
namespace {

FileIdentity identityOf(const struct stat& status) {
  return {.device = status.st_dev,
          .inode = status.st_ino,
          .size = status.st_size,
          .modifiedNanoseconds = status.st_mtim.tv_sec * 1'000'000'000 + status.st_mtim.tv_nsec};
}

}  // namespace

FileIdentity identifyFile(const std::filesystem::path& path) {
  struct stat status {};
  return ::stat(path.c_str(), &status) == 0 ? identityOf(status) : FileIdentity{};
}

FileIdentity identifyLink(const std::filesystem::path& path) {
  struct stat status {};
  return ::lstat(path.c_str(), &status) == 0 ? identityOf(status) : FileIdentity{};
}

}  // namespace lunevra
