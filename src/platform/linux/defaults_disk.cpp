#include "platform/linux/defaults_disk.h"

#include <cerrno>
#include <cstdio>
#include <fcntl.h>
#include <unistd.h>

#include "platform/linux/folder_lock.h"

namespace lunevra {
namespace {

using std::chrono::milliseconds;
using std::chrono::steady_clock;

constexpr milliseconds patience{250};
constexpr milliseconds untilNextTry{1000};

std::filesystem::path beside(const std::filesystem::path& path, const std::string& suffix) {
  return path.string() + suffix;
}

}  // namespace

DefaultsDisk::DefaultsDisk(std::filesystem::path file, Log& log)
    : path_(std::move(file)), log_(log) {}

std::optional<StoredValue> DefaultsDisk::read(std::string_view key) {
  // Readers ask every second for ever; a disk in trouble must not make each of them wait.
  if (!reading_.isReported || steady_clock::now() >= reading_.retryAt)
    attempt(reading_, [&](DefaultsFile& file) {
      if (file.hasChangedElsewhere()) known_.clear();
      if (known_.find(key) == known_.end()) known_.emplace(key, file.read(key));
    });
  const auto found = known_.find(key);
  return found != known_.end() ? found->second : std::nullopt;
}

bool DefaultsDisk::holds(std::string_view key, const std::optional<StoredValue>& value) {
  return read(key) == value && !reading_.isReported;
}

bool DefaultsDisk::write(std::string_view key, const std::optional<StoredValue>& value) {
  if (file_ != nullptr && file_->isReadOnly()) file_.reset();  // it may have become writable since
  const bool isWritten = attempt(writing_, [&](DefaultsFile& file) { file.write(key, value); });
  if (isWritten) {
    known_.insert_or_assign(std::string(key), value);
    leave(reading_);
  }
  return isWritten;
}

bool DefaultsDisk::attempt(Trouble& trouble, const std::function<void(DefaultsFile&)>& work) {
  // Twice at most is something set aside or closed; then the fresh file has to do.
  for (int round = 0; round < 3; ++round) {
    try {
      openIfNeeded();
      file_->setPatience(trouble.isReported ? milliseconds::zero() : patience);
      work(*file_);
      leave(trouble);
      return true;
    } catch (const DatabaseError& error) {
      if (canStartAfresh(error)) continue;
      enter(trouble, error);
      return false;
    }
  }
  enter(trouble, DatabaseError(DatabaseFault::unavailable, "damaged again and again"));
  return false;
}

void DefaultsDisk::openIfNeeded() {
  const auto current = identifyFile(path_);
  if (file_ != nullptr && current.exists() && current.isSameFile(identity_)) {
    if (current != identity_) forgetContents();
    identity_ = current;
    return;
  }
  file_.reset();
  if (!makePrivateFolder(path_.parent_path()))
    throw DatabaseError(DatabaseFault::unavailable, "its folder cannot be made");
  const auto lock = FolderLock::acquire(path_.parent_path(), patience);
  if (!lock) throw DatabaseError(DatabaseFault::busy, "its folder is locked");
  if (!identifyFile(path_).exists()) {
    // The journal of a deleted file must not be taken for the new one's.
    ::unlink(beside(path_, "-wal").c_str());
    ::unlink(beside(path_, "-shm").c_str());
  }
  identity_ = identifyFile(path_);
  auto opened = std::make_unique<DefaultsFile>(path_);
  identity_ = identifyFile(path_);
  file_ = std::move(opened);
}

void DefaultsDisk::forgetContents() {
  file_->forgetPages();
  known_.clear();
}

bool DefaultsDisk::canStartAfresh(const DatabaseError& error) {
  switch (error.fault()) {
    case DatabaseFault::busy:
      return false;
    case DatabaseFault::foreign:
      if (file_ == nullptr) return setAside(error.what());
      file_.reset();  // opening it again puts a dropped table back
      return true;
    case DatabaseFault::corrupt:
      return setAside(error.what());
    case DatabaseFault::unavailable:
      return false;
  }
  return false;
}

bool DefaultsDisk::setAside(const std::string& reason) {
  file_.reset();
  const auto lock = FolderLock::acquire(path_.parent_path(), patience);
  if (!lock) return false;
  known_.clear();
  if (!identifyFile(path_).isSameFile(identity_)) return true;  // another process was faster
  for (int number = 1; number < 1000; ++number) {
    const auto name = beside(path_, ".corrupt-" + std::to_string(number));
    if (::renameat2(AT_FDCWD, path_.c_str(), AT_FDCWD, name.c_str(), RENAME_NOREPLACE) != 0) {
      if (errno == EEXIST) continue;
      return false;
    }
    ::rename(beside(path_, "-wal").c_str(), beside(name, "-wal").c_str());
    ::unlink(beside(path_, "-shm").c_str());
    log_.line("Lunevra: " + path_.string() + " is damaged (" + reason + "), set aside as " +
              name.filename().string());
    return true;
  }
  return false;
}

void DefaultsDisk::enter(Trouble& trouble, const DatabaseError& error) {
  // A failing disk may leave the connection unusable; a full one or a lock does not.
  if (error.fault() == DatabaseFault::unavailable && &trouble == &reading_) file_.reset();
  trouble.retryAt = steady_clock::now() + untilNextTry;
  if (trouble.isReported) return;
  trouble.isReported = true;
  log_.line("Lunevra: " + path_.string() +
            (&trouble == &reading_ ? " cannot be read (" : " cannot be written (") + error.what() +
            "), going on from memory");
}

void DefaultsDisk::leave(Trouble& trouble) {
  if (!trouble.isReported) return;
  trouble.isReported = false;
  log_.line("Lunevra: " + path_.string() +
            (&trouble == &reading_ ? " can be read again" : " can be written again"));
}

}  // namespace lunevra
