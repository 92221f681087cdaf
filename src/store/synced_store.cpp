#include "store/synced_store.h"

#include <array>
#include <limits>
#include <string>

#include "platform/stored_value_conversion.h"
#include "store/settings_keys.h"

namespace lunevra {
namespace {

constexpr std::array integerKeys{settings_key::blockStartHour, settings_key::blockStartMinute,
                                 settings_key::wakeHour, settings_key::wakeMinute,
                                 settings_key::activeUnlockGeneration};

UserDefaults& openLocal(UserDefaultsDomains& domains) {
  UserDefaults* const suite = domains.suite(settings_key::appGroup);
  return suite != nullptr ? *suite : domains.standard();
}

}  // namespace

SyncedStore::SyncedStore(const Host& host)
    : clock_(host.clock),
      runLoop_(host.runLoop),
      notificationCenter_(host.notificationCenter),
      log_(host.log),
      kv_(host.cloud),
      local_(openLocal(host.defaults)),
      cloudObservation_(kv_.observeExternalChanges([this] { icloudChanged(); })) {
  kv_.synchronize();
  pullFromCloud();
}

std::int64_t SyncedStore::integer(std::string_view key, std::int64_t defaultValue) const {
  return local_.integer(key).value_or(defaultValue);
}

bool SyncedStore::flag(std::string_view key, bool defaultValue) const {
  return local_.flag(key).value_or(defaultValue);
}

std::optional<Instant> SyncedStore::lockEndDate() const {
  const double seconds = local_.number(settings_key::lockEndDate).value_or(0.0);
  return seconds > 0.0 ? std::optional(Instant{seconds}) : std::nullopt;
}

void SyncedStore::write(std::string_view key, const StoredValue& value) {
  local_.set(key, value);
  kv_.set(key, value);
}

void SyncedStore::writeAndNotify(std::string_view key, const StoredValue& value) {
  write(key, value);
  notifyChanged();
}

void SyncedStore::notifyChanged() {
  kv_.synchronize();
  announceChange();
}

void SyncedStore::announceChange() {
  runLoop_.async([&center = notificationCenter_] { center.post(changedNotification); });
}

void SyncedStore::icloudChanged() {
  pullFromCloud();
  announceChange();
}

// A cloud value of a foreign type counts as absent: copying it would lose a good local value.
void SyncedStore::pullFromCloud() {
  for (const auto key : integerKeys)
    if (const auto value = asInteger(kv_.object(key))) local_.set(key, *value);
  if (const auto value = asFlag(kv_.object(settings_key::scheduleEnabled)))
    local_.set(settings_key::scheduleEnabled, *value);
  pullCommitment();
  if (const auto value = asNumber(kv_.object(settings_key::activeUnlockUntil)))
    local_.set(settings_key::activeUnlockUntil, *value);
}

// Another machine may have chosen a shorter one before it heard of the one in force here, and its
// clock may be ahead.
void SyncedStore::pullCommitment() {
  const auto runningEnd = runningCommitmentEnd();
  const auto isEnabled = asFlag(kv_.object(settings_key::lockEnabled));
  if (isEnabled && (*isEnabled || !runningEnd)) local_.set(settings_key::lockEnabled, *isEnabled);
  const auto end = asNumber(kv_.object(settings_key::lockEndDate));
  if (end && (!runningEnd || *end >= runningEnd->secondsSince1970))
    local_.set(settings_key::lockEndDate, *end);
}

std::optional<Instant> SyncedStore::runningCommitmentEnd() const {
  const auto end = lockEndDate();
  return flag(settings_key::lockEnabled, false) && end && clock_.now() < *end ? end : std::nullopt;
}

void SyncedStore::seedScheduleIfNeeded(std::int64_t blockStartHour, std::int64_t blockStartMinute,
                                       std::int64_t wakeHour, std::int64_t wakeMinute) {
  if (flag(settings_key::scheduleSeeded, false)) return;
  if (kv_.object(settings_key::blockStartHour)) {
    local_.set(settings_key::scheduleSeeded, true);
    return;
  }
  writeAndNotify(settings_key::blockStartHour, blockStartHour);
  writeAndNotify(settings_key::blockStartMinute, blockStartMinute);
  writeAndNotify(settings_key::wakeHour, wakeHour);
  writeAndNotify(settings_key::wakeMinute, wakeMinute);
  writeAndNotify(settings_key::scheduleSeeded, true);
}

bool SyncedStore::isCommitmentLocked() {
  const auto end = lockEndDate();
  if (!end || !flag(settings_key::lockEnabled, false)) return false;
  if (clock_.now() < *end) return true;
  writeAndNotify(settings_key::lockEnabled, false);
  return false;
}

void SyncedStore::setCommitmentLock(Instant until) {
  const auto existing = lockEndDate();
  setLockEndDate(existing && *existing > until ? *existing : until);
  writeAndNotify(settings_key::lockEnabled, true);
}

void SyncedStore::setLockEndDate(std::optional<Instant> end) {
  writeAndNotify(settings_key::lockEndDate, end ? end->secondsSince1970 : 0.0);
}

void SyncedStore::recordActiveUnlock(Instant until) {
  auto generation = integer(settings_key::activeUnlockGeneration, 0);
  if (generation < std::numeric_limits<std::int64_t>::max())
    ++generation;
  else
    log_.line("Lunevra: activeUnlockGeneration has reached its maximum and stays there");
  writeAndNotify(settings_key::activeUnlockUntil, until.secondsSince1970);
  writeAndNotify(settings_key::activeUnlockGeneration, generation);
}

}  // namespace lunevra
