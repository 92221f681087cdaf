#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

#include "platform/host.h"

namespace lunevra {

/// The settings shared by all of the person's machines: every write goes to the cloud store and to
/// the local app-group defaults, every read comes from the local copy, and whatever the cloud holds
/// replaces the local value at construction and on each change from elsewhere; only a commitment in
/// force is neither ended nor shortened by it.
///
/// Main thread only, except that a change from elsewhere may arrive on any thread;
/// `changedNotification` is always posted in a later turn of the main loop.
class SyncedStore {
 public:
  static constexpr std::string_view changedNotification = "Lunevra.syncedStoreChanged";

  explicit SyncedStore(const Host& host);
  ~SyncedStore() = default;
  SyncedStore(const SyncedStore&) = delete;
  SyncedStore& operator=(const SyncedStore&) = delete;

  /// An absent key, and one that holds another type, yield the default.
  [[nodiscard]] std::int64_t integer(std::string_view key, std::int64_t defaultValue) const;
  [[nodiscard]] bool flag(std::string_view key, bool defaultValue) const;
  /// Absent where the stored number is 0 or less.
  [[nodiscard]] std::optional<Instant> lockEndDate() const;

  /// Writes to both stores. The writer of a mirrored key, or of a group of them, then calls
  /// `notifyChanged`.
  void write(std::string_view key, const StoredValue& value);
  /// Pushes pending cloud writes and announces one change.
  void notifyChanged();

  /// First run on this machine: its schedule becomes the shared one unless the cloud has one.
  void seedScheduleIfNeeded(std::int64_t blockStartHour, std::int64_t blockStartMinute,
                            std::int64_t wakeHour, std::int64_t wakeMinute);

  /// Whether a commitment is in force. The first call after its end switches it off in both stores.
  [[nodiscard]] bool isCommitmentLocked();
  /// Starts a commitment or lengthens the running one; it is never shortened.
  void setCommitmentLock(Instant until);
  void setLockEndDate(std::optional<Instant> end);

  /// Counts one more release by physical key, lasting until `until`.
  void recordActiveUnlock(Instant until);

  void pullFromCloud();

 private:
  void icloudChanged();
  void pullCommitment();
  [[nodiscard]] std::optional<Instant> runningCommitmentEnd() const;
  void announceChange();
  void writeAndNotify(std::string_view key, const StoredValue& value);

  Clock& clock_;
  RunLoop& runLoop_;
  NotificationCenter& notificationCenter_;
  Log& log_;
  CloudKeyValueStore& kv_;
  UserDefaults& local_;
  Registration cloudObservation_;
};

}  // namespace lunevra
