#pragma once

#include <atomic>
#include <cstdint>
#include <filesystem>
#include <functional>
#include <string>
#include <string_view>

#include "platform/linux/unique_descriptor.h"

namespace lunevra {

/// Tells when the files of one folder may have changed, whoever changed them and however, and when
/// the folder itself comes, goes or is replaced by another. Costs nothing in between: the thread
/// that waits sleeps in the kernel.
class FolderWatch {
 public:
  /// Only files for which `concerns` answers true are looked at.
  FolderWatch(const std::filesystem::path& folder,
              std::function<bool(std::string_view fileName)> concerns);

  /// Blocks until something may have changed or `wake` is called; changes that follow each other
  /// quickly are one. Answers false once the watch has been stopped. One thread.
  [[nodiscard]] bool wait();

  /// Any thread.
  void wake();
  void stop();

 private:
  enum class Change { none, files, structure };

  void arm();
  bool armOnce();
  bool awaitFolder();
  void watchPath(const std::filesystem::path& path);
  [[nodiscard]] Change waitForChange(int timeoutMilliseconds);
  [[nodiscard]] Change drainEvents();
  [[nodiscard]] Change changeOf(int watch, std::uint32_t mask, std::string_view name) const;

  std::filesystem::path folder_;
  std::function<bool(std::string_view)> concerns_;
  UniqueDescriptor wakeUp_;
  UniqueDescriptor mounts_;
  UniqueDescriptor inotify_;
  int folderWatch_ = -1;
  std::string awaitedName_;
  bool isArmed_ = false;
  std::atomic<bool> isStopped_ = false;
};

}  // namespace lunevra
