#include "engine/commitment.h"
#include "engine/shutdown_manager.h"
#include "store/settings_keys.h"

namespace lunevra {
namespace {

constexpr ScheduleField blockStartHourField{settings_key::blockStartHour, 22, 23};
constexpr ScheduleField blockStartMinuteField{settings_key::blockStartMinute, 0, 59};
constexpr ScheduleField wakeHourField{settings_key::wakeHour, 6, 23};
constexpr ScheduleField wakeMinuteField{settings_key::wakeMinute, 0, 59};

}  // namespace

std::int64_t ShutdownManager::preference(const ScheduleField& field) const {
  const auto stored = host_.defaults.standard().integer(field.key);
  return field.sanitised(stored.value_or(field.defaultValue));
}

void ShutdownManager::setPreference(const ScheduleField& field, std::int64_t value) {
  host_.defaults.standard().set(field.key, value);
}

Schedule ShutdownManager::schedule() const {
  return {preference(blockStartHourField), preference(blockStartMinuteField),
          preference(wakeHourField), preference(wakeMinuteField)};
}

bool ShutdownManager::isWithinBlockingWindow(Instant instant) const {
  return lunevra::isWithinBlockingWindow(schedule(), host_.calendar, instant);
}

Instant ShutdownManager::nextWakeDate(Instant after) const {
  return lunevra::nextWakeDate(schedule(), host_.calendar, after);
}

void ShutdownManager::applySyncedState() {
  isApplyingSyncedState_ = true;
  for (const auto& field :
       {blockStartHourField, blockStartMinuteField, wakeHourField, wakeMinuteField}) {
    const auto value = store_.integer(field.key, field.defaultValue);
    if (field.sanitised(value) != preference(field)) willChange_.notify();
    setPreference(field, value);
  }
  setEnabled(store_.flag(settings_key::scheduleEnabled, true));
  change(isLocked_, store_.isCommitmentLocked());
  change(lockEndDate_, store_.lockEndDate());
  isApplyingSyncedState_ = false;
}

void ShutdownManager::syncedStoreChanged() {
  host_.runLoop.async(lifetime_.guard([this] {
    applySyncedState();
    refreshCommitmentState();
    evaluateSchedule();
  }));
}

void ShutdownManager::setEnabled(bool isEnabled) {
  change(isEnabled_, isEnabled);
  handleEnableSwitch();
}

void ShutdownManager::handleEnableSwitch() {
  if (isApplyingSyncedState_ || isLocked_) return;
  host_.defaults.standard().set(settings_key::shutdownEnabled, isEnabled_);
  if (store_.flag(settings_key::scheduleEnabled, true) == isEnabled_) return;
  store_.write(settings_key::scheduleEnabled, isEnabled_);
  store_.notifyChanged();
}

void ShutdownManager::updateBlockStart(std::int64_t hour, std::int64_t minute) {
  updateTime(blockStartHourField, hour, blockStartMinuteField, minute);
}

void ShutdownManager::updateWakeTime(std::int64_t hour, std::int64_t minute) {
  updateTime(wakeHourField, hour, wakeMinuteField, minute);
}

void ShutdownManager::updateTime(const ScheduleField& hourField, std::int64_t hour,
                                 const ScheduleField& minuteField, std::int64_t minute) {
  if (isLocked_ || currentState_ != BlockingState::idle) return;
  willChange_.notify();
  setPreference(hourField, hour);
  setPreference(minuteField, minute);
  store_.write(hourField.key, hour);
  store_.notifyChanged();
  store_.write(minuteField.key, minute);
  store_.notifyChanged();
  evaluateSchedule();
}

void ShutdownManager::activateCommitmentLock(Instant until) {
  change(lockEndDate_, std::optional(until));
  change(isLocked_, true);
  store_.setCommitmentLock(until);
}

void ShutdownManager::refreshCommitmentState() {
  change(isLocked_, store_.isCommitmentLocked());
  change(lockEndDate_, store_.lockEndDate());
}

std::string ShutdownManager::commitmentTimeRemainingText() const {
  return commitmentRemainingText(lockEndDate_, host_.clock.now());
}

}  // namespace lunevra
