#include "platform/linux/folder_lock.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <thread>

namespace lunevra {

bool makePrivateFolder(const std::filesystem::path& folder) {
  std::error_code error;
  if (std::filesystem::is_directory(folder, error)) return true;
  if (folder.has_parent_path() && folder.parent_path() != folder)
    makePrivateFolder(folder.parent_path());
  ::mkdir(folder.c_str(), 0700);
  return std::filesystem::is_directory(folder, error);
}

std::optional<FolderLock> FolderLock::acquire(const std::filesystem::path& folder,
                                              std::chrono::milliseconds patience) {
  UniqueDescriptor descriptor(::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
  if (!descriptor) return std::nullopt;
  const auto deadline = std::chrono::steady_clock::now() + patience;
  while (::flock(descriptor.get(), LOCK_EX | LOCK_NB) != 0) {
    if (errno != EWOULDBLOCK || std::chrono::steady_clock::now() >= deadline) return std::nullopt;
    std::this_thread::sleep_for(std::chrono::milliseconds{5});
  }
  return FolderLock(std::move(descriptor));
}

}  // namespace lunevra
