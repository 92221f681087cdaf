#include "platform/linux/cloud_folder.h"

#include <cmath>
#include <sys/stat.h>

#include "platform/foundation/stored_value_json.h"
#include "platform/linux/background_thread.h"
#include "platform/linux/cloud_file.h"
#include "platform/linux/whole_file.h"

namespace lunevra {

CloudFolder::CloudFolder(std::filesystem::path folder, Log& log)
    : folder_(std::move(folder)),
      log_(log),
      watch_(folder_, [](std::string_view name) { return keyOfCloudFile(name).has_value(); }) {
  readFolder();
  startWatching();
}

CloudFolder::~CloudFolder() {
  watch_.stop();
  if (thread_.joinable()) thread_.join();
}

std::optional<StoredValue> CloudFolder::object(std::string_view key) const {
  const std::lock_guard lock(valuesMutex_);
  if (const auto found = pending_.find(key); found != pending_.end()) return found->second;
  if (const auto found = values_.find(key); found != values_.end()) return found->second;
  return std::nullopt;
}

void CloudFolder::set(std::string_view key, const StoredValue& value) {
  // What the file could not say again to another machine is not worth a file.
  if (decodeStoredValue(encodeStoredValue(value)) != value) return;
  const std::lock_guard folderLock(folderMutex_);
  const bool isOnDisk = readCloudFile(folder_ / cloudFileName(key)) == value;
  {
    const std::lock_guard lock(valuesMutex_);
    if (isOnDisk) {
      pending_.erase(std::string(key));
      values_.insert_or_assign(std::string(key), value);
    } else {
      pending_.insert_or_assign(std::string(key), value);
    }
  }
  writePending();
}

void CloudFolder::synchronize() {
  const std::lock_guard folderLock(folderMutex_);
  writePending();
  if (!readFolder()) return;
  hasUnannouncedChange_ = true;
  watch_.wake();
}

Registration CloudFolder::observeExternalChanges(std::function<void()> block) {
  return observers_.add(std::move(block));
}

void CloudFolder::startWatching() {
  if (auto thread = startBackgroundThread([this] { watch(); }))
    thread_ = std::move(*thread);
  else
    log_.line("Lunevra: changes of the cloud folder go unnoticed (no thread)");
}

void CloudFolder::watch() {
  while (watch_.wait()) {
    bool hasChanged = hasUnannouncedChange_.exchange(false);
    {
      const std::lock_guard folderLock(folderMutex_);
      if (readFolder()) hasChanged = true;
    }
    if (hasChanged) observers_.notify();
  }
}

bool CloudFolder::readFolder() {
  const auto listing = listCloudFolder(folder_);
  const std::lock_guard lock(valuesMutex_);
  Values current;
  if (listing)
    for (const auto& [key, value] : *listing) {
      if (value) {
        current.emplace(key, *value);
      } else if (const auto known = values_.find(key); known != values_.end()) {
        current.insert(*known);
      }
    }
  const bool hasChanged = current != values_;
  values_ = std::move(current);
  return hasChanged;
}

void CloudFolder::writePending() {
  if (pending_.empty()) return;  // only ever changed under the folder's mutex, which we hold
  // One level only: a drive that is not mounted must not get a folder in its place.
  ::mkdir(folder_.c_str(), 0700);
  std::string failure;
  for (auto entry = pending_.begin(); entry != pending_.end();) {
    const auto reason =
        replaceFile(folder_ / cloudFileName(entry->first), encodeStoredValue(entry->second));
    if (!reason.empty()) {
      failure = reason;
      ++entry;
      continue;
    }
    const std::lock_guard lock(valuesMutex_);
    values_.insert_or_assign(entry->first, entry->second);
    entry = pending_.erase(entry);
  }
  if (!failure.empty() && !isWriteFailureReported_)
    log_.line("Lunevra: " + folder_.string() + " takes no writes (" + failure +
              "), going on from memory");
  isWriteFailureReported_ = !failure.empty();
}

}  // namespace lunevra
