#include "platform/linux/single_instance.h"

#include <cerrno>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>

#include "platform/linux/folder_lock.h"

namespace lunevra {
namespace {

bool lock(int file, int operation) {
  int result = 0;
  do result = ::flock(file, operation);
  while (result != 0 && errno == EINTR);
  return result == 0;
}

/// Whether the file holds the word that its last holder left; it is empty afterwards.
bool takeWord(int file) {
  char word = 0;
  const bool hasWord = ::pread(file, &word, 1, 0) == 1;
  // A word that cannot be wiped merely asks a later copy to quit, which it may refuse.
  return ::ftruncate(file, 0) == 0 && hasWord;
}

}  // namespace

std::optional<SingleInstance> SingleInstance::tryAcquire(Folders folders, Log& log) {
  return acquire(folders, log, Patience::none);
}

SingleInstance SingleInstance::waitFor(Folders folders, Log& log) {
  return *acquire(folders, log, Patience::endless);
}

std::optional<SingleInstance> SingleInstance::acquire(Folders folders, Log& log,
                                                      Patience patience) {
  for (const auto& folder : folders) {
    makePrivateFolder(folder);  // if it cannot be made, opening says so
    const auto path = folder / "lunevra.lock";
    UniqueDescriptor file(
        ::open(path.c_str(), O_RDWR | O_CREAT | O_CLOEXEC | O_NOFOLLOW | O_NONBLOCK, 0600));
    if (!file) continue;
    if (lock(file.get(), LOCK_EX | LOCK_NB)) {
      takeWord(file.get());  // meant for a copy that waited, and there was none
      return SingleInstance(std::move(file), false);
    }
    if (errno != EWOULDBLOCK) continue;
    if (patience == Patience::none) {
      ::futimens(file.get(), nullptr);  // calls the copy that runs
      return std::nullopt;
    }
    if (!lock(file.get(), LOCK_EX)) continue;
    const bool followsQuit = takeWord(file.get());
    return SingleInstance(std::move(file), followsQuit);
  }
  log.line("Lunevra: no folder takes a lock, cannot tell whether another copy runs");
  return SingleInstance(UniqueDescriptor(), false);
}

void SingleInstance::leaveWordOfQuit() const {
  const char word = 'q';
  // Without the word the copy that waits goes on, as after any other end.
  [[maybe_unused]] const auto written = ::pwrite(file_.get(), &word, 1, 0);
}

}  // namespace lunevra
