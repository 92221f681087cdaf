#pragma once

#include <atomic>
#include <filesystem>
#include <functional>
#include <map>
#include <mutex>
#include <optional>
#include <string>
#include <string_view>
#include <thread>

#include "platform/cloud_key_value_store.h"
#include "platform/linux/folder_watch.h"
#include "platform/linux/shared_observers.h"
#include "platform/log.h"

namespace lunevra {

/// The shared store as a folder that a file-sync program keeps the same on the person's machines,
/// one file a key. Reads come from memory, kept current by a thread that sleeps until something
/// changes in the folder; observers are called on it.
///
/// A file that cannot be understood is doubt: its key keeps its last good value. A write that fails
/// is kept and tried again with the next one or with `synchronize`.
class CloudFolder : public CloudKeyValueStore {
 public:
  /// The log outlives the store.
  CloudFolder(std::filesystem::path folder, Log& log);
  ~CloudFolder() override;
  CloudFolder(const CloudFolder&) = delete;
  CloudFolder& operator=(const CloudFolder&) = delete;

  [[nodiscard]] std::optional<StoredValue> object(std::string_view key) const override;
  void set(std::string_view key, const StoredValue& value) override;
  void synchronize() override;
  [[nodiscard]] Registration observeExternalChanges(std::function<void()> block) override;

 private:
  using Values = std::map<std::string, StoredValue, std::less<>>;

  void startWatching();
  void watch();
  /// Answers whether another machine has changed something.
  bool readFolder();
  void writePending();

  std::filesystem::path folder_;
  Log& log_;

  // Held over a whole look at the folder or a change of it, so that an own write is never taken for
  // somebody else's; always taken before the other one.
  std::mutex folderMutex_;
  bool isWriteFailureReported_ = false;

  mutable std::mutex valuesMutex_;
  Values values_;
  Values pending_;

  std::atomic<bool> hasUnannouncedChange_ = false;
  SharedObservers observers_;
  FolderWatch watch_;
  std::thread thread_;
};

}  // namespace lunevra
