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
  using Folders = std::span<const std::filesystem::path>;

  /// Locks `lunevra.lock` in the first folder that takes it. Nothing if another process holds the
  /// lock, which is called then. Where no folder takes a lock the right is granted: two locks
  /// disturb nobody's night, none would. Never waits.
  [[nodiscard]] static std::optional<SingleInstance> tryAcquire(Folders folders, Log& log);
  /// The same, but sleeps while another process holds the lock and has it the moment that one ends.
  [[nodiscard]] static SingleInstance waitFor(Folders folders, Log& log);

  /// Tells a copy that waits for the lock that the person has quit this one.
  void leaveWordOfQuit() const;
  /// The lock file, for those who listen to it; -1 where there is none.
  [[nodiscard]] int fileDescriptor() const { return file_.get(); }
  /// The copy that was waited for left that word.
  [[nodiscard]] bool followsQuit() const { return followsQuit_; }

 private:
  enum class Patience { none, endless };

  SingleInstance(UniqueDescriptor file, bool followsQuit)
      : file_(std::move(file)), followsQuit_(followsQuit) {}
  static std::optional<SingleInstance> acquire(Folders folders, Log& log, Patience patience);

  UniqueDescriptor file_;
  bool followsQuit_ = false;
};

}  // namespace lunevra
