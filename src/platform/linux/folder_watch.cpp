#include "platform/linux/folder_watch.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <cstring>
#include <fcntl.h>
#include <poll.h>
#include <sys/eventfd.h>
#include <sys/inotify.h>

namespace lunevra {
namespace {

using std::chrono::milliseconds;
using std::chrono::steady_clock;

constexpr std::uint32_t contentEvents = IN_CREATE | IN_CLOSE_WRITE | IN_MODIFY | IN_MOVED_TO |
                                        IN_MOVED_FROM | IN_DELETE | IN_ATTRIB | IN_DELETE_SELF |
                                        IN_MOVE_SELF | IN_ONLYDIR;
constexpr std::uint32_t ancestorEvents = IN_MOVE_SELF | IN_DELETE_SELF | IN_DONT_FOLLOW;
constexpr std::uint32_t appearanceEvents = IN_CREATE | IN_MOVED_TO | IN_ATTRIB;

constexpr milliseconds quiet{50};
constexpr milliseconds longestBurst{400};
// Where the kernel refuses to watch, the folder is looked at now and then.
constexpr int unwatchedInterval = 5000;
constexpr int longestLinkChain = 40;

/// The whole path if nothing is missing, but may not be looked into.
std::filesystem::path firstMissingStep(const std::filesystem::path& path) {
  std::filesystem::path step;
  for (const auto& name : path) {
    step /= name;
    std::error_code error;
    if (!std::filesystem::exists(step, error)) break;
  }
  return step;
}

}  // namespace

FolderWatch::FolderWatch(const std::filesystem::path& folder,
                         std::function<bool(std::string_view)> concerns)
    : concerns_(std::move(concerns)),
      wakeUp_(::eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK)),
      mounts_(::open("/proc/self/mountinfo", O_RDONLY | O_CLOEXEC)) {
  std::error_code error;
  folder_ = std::filesystem::absolute(folder, error).lexically_normal();
  if (!folder_.has_filename()) folder_ = folder_.parent_path();
}

bool FolderWatch::wait() {
  if (isStopped_) return false;
  if (!isArmed_) {
    // What happened before the watch began would go unseen otherwise.
    arm();
    return true;
  }
  const bool isWatching = wakeUp_ && (folderWatch_ >= 0 || !awaitedName_.empty());
  auto change = Change::none;
  while (change == Change::none && !isStopped_)
    change = waitForChange(isWatching ? -1 : unwatchedInterval);
  const auto deadline = steady_clock::now() + longestBurst;
  auto further = change;
  while (further != Change::none && !isStopped_ && steady_clock::now() < deadline) {
    further = waitForChange(static_cast<int>(quiet.count()));
    change = std::max(change, further);
  }
  if (change == Change::structure) arm();
  return !isStopped_;
}

void FolderWatch::wake() {
  const std::uint64_t one = 1;
  [[maybe_unused]] const auto written = ::write(wakeUp_.get(), &one, sizeof one);
}

void FolderWatch::stop() {
  isStopped_ = true;
  wake();
}

void FolderWatch::arm() {
  isArmed_ = true;
  // The path may change under our hands; the last look has to be later than the last watch.
  for (int round = 0; round < 10; ++round)
    if (armOnce()) return;
}

/// Answers whether the watches fit the path as it is now.
bool FolderWatch::armOnce() {
  inotify_ = UniqueDescriptor(::inotify_init1(IN_NONBLOCK | IN_CLOEXEC));
  folderWatch_ = -1;
  awaitedName_.clear();
  if (!inotify_) return true;
  std::error_code error;
  watchPath(folder_);
  if (const auto target = std::filesystem::canonical(folder_, error); !error && target != folder_)
    watchPath(target);
  folderWatch_ = ::inotify_add_watch(inotify_.get(), folder_.c_str(), contentEvents | IN_MASK_ADD);
  return folderWatch_ >= 0 || awaitFolder();
}

/// Watches for the first step of the path that is missing. Answers false if it has come meanwhile.
bool FolderWatch::awaitFolder() {
  auto path = folder_;
  for (int hop = 0; hop < longestLinkChain; ++hop) {
    const auto missing = firstMissingStep(path);
    std::error_code error;
    const auto target = std::filesystem::read_symlink(missing, error);
    if (error) {
      const auto parent = missing.parent_path();
      if (::inotify_add_watch(inotify_.get(), parent.c_str(), appearanceEvents | IN_MASK_ADD) >= 0)
        awaitedName_ = missing.filename().string();
      return ::access(missing.c_str(), R_OK) != 0;
    }
    const auto beyond = path.lexically_relative(missing);
    path = (missing.parent_path() / target / beyond).lexically_normal();
    if (!path.has_filename()) path = path.parent_path();
    watchPath(path);
  }
  return true;
}

/// Every step of the path may be renamed, deleted or, as a link, be pointed elsewhere.
void FolderWatch::watchPath(const std::filesystem::path& path) {
  for (auto step = path; step.has_relative_path(); step = step.parent_path()) {
    std::error_code error;
    const bool isLink = std::filesystem::is_symlink(step, error);
    ::inotify_add_watch(inotify_.get(), step.c_str(),
                        ancestorEvents | IN_MASK_ADD | (isLink ? IN_ATTRIB : 0U));
  }
}

FolderWatch::Change FolderWatch::waitForChange(int timeoutMilliseconds) {
  std::array<pollfd, 3> sources{
      {{wakeUp_.get(), POLLIN, 0}, {mounts_.get(), POLLPRI, 0}, {inotify_.get(), POLLIN, 0}}};
  const int ready = ::poll(sources.data(), sources.size(), timeoutMilliseconds);
  if (ready == 0)
    return timeoutMilliseconds == unwatchedInterval ? Change::structure : Change::none;
  if (ready < 0) return Change::none;
  auto change = Change::none;
  if ((sources[0].revents & POLLIN) != 0) {
    std::uint64_t count = 0;
    [[maybe_unused]] const auto size = ::read(wakeUp_.get(), &count, sizeof count);
    change = Change::files;
  }
  // A drive that is mounted over the folder, or taken away, tells the folder's watch nothing.
  if (sources[1].revents != 0) change = Change::structure;
  if (sources[2].revents != 0) change = std::max(change, drainEvents());
  return change;
}

FolderWatch::Change FolderWatch::drainEvents() {
  auto change = Change::none;
  alignas(inotify_event) std::array<char, 16 * 1024> buffer;
  for (;;) {
    const auto size = ::read(inotify_.get(), buffer.data(), buffer.size());
    if (size <= 0) return change;
    for (std::size_t at = 0; at < static_cast<std::size_t>(size);) {
      inotify_event event{};
      std::memcpy(&event, buffer.data() + at, sizeof event);
      const char* name = event.len > 0 ? buffer.data() + at + sizeof event : "";
      change = std::max(change, changeOf(event.wd, event.mask, name));
      at += sizeof event + event.len;
    }
  }
}

FolderWatch::Change FolderWatch::changeOf(int watch, std::uint32_t mask,
                                          std::string_view name) const {
  if (name.empty() || (mask & IN_Q_OVERFLOW) != 0) return Change::structure;
  if (watch == folderWatch_) return concerns_(name) ? Change::files : Change::none;
  return name == awaitedName_ ? Change::structure : Change::none;
}

}  // namespace lunevra
