#include "platform/linux/single_instance.h"

#include <cerrno>
#include <fcntl.h>
#include <sys/file.h>

#include "platform/linux/folder_lock.h"

namespace lunevra {

std::optional<SingleInstance> SingleInstance::tryAcquire(
    std::span<const std::filesystem::path> folders, Log& log) {
  for (const auto& folder : folders) {
    makePrivateFolder(folder);  // if it cannot be made, opening says so
    const auto path = folder / "lunevra.lock";
    UniqueDescriptor file(
        ::open(path.c_str(), O_RDWR | O_CREAT | O_CLOEXEC | O_NOFOLLOW | O_NONBLOCK, 0600));
    if (!file) continue;
    if (::flock(file.get(), LOCK_EX | LOCK_NB) == 0) return SingleInstance(std::move(file));
    if (errno == EWOULDBLOCK) return std::nullopt;
  }
  log.line("Lunevra: no folder takes a lock, cannot tell whether another copy runs");
  return SingleInstance(UniqueDescriptor());
}

}  // namespace lunevra
