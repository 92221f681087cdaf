#include "ui/settings/settings_model.h"

#include <utility>

namespace lunevra {

SettingsModel::SettingsModel(const Host& host, ShutdownManager& engine,
                             std::function<void()> dismiss)
    : host_(host),
      engine_(engine),
      dismiss_(std::move(dismiss)),
      follower_(host.runLoop, engine, [this] { read(); }) {
  read();
}

void SettingsModel::loadFromEngine() {
  copySchedule();
  engine_.refreshPhysicalKeyStatus();
  follower_.readNow();
}

void SettingsModel::copySchedule() {
  edited_ = engine_.schedule();
}

void SettingsModel::read() {
  const auto schedule = engine_.schedule();
  values_ = {
      .isCommitted = engine_.isLocked(),
      .isIdle = engine_.currentState() == BlockingState::idle,
      .isEnabled = engine_.isEnabled(),
      .remainingText = engine_.commitmentTimeRemainingText(),
      .nightlyReleaseText = formatTime12Hour(schedule.wakeHour, schedule.wakeMinute),
      .isKeyConfigured = engine_.isPhysicalKeyConfigured(),
      .isKeyMounted = engine_.isPhysicalKeyMounted(),
      .message = engine_.physicalKeyMessage(),
      .dashboard = readHardnessDashboard(host_, engine_),
  };
}

bool SettingsModel::isFrozen() const {
  return engine_.isLocked() || engine_.currentState() != BlockingState::idle;
}

void SettingsModel::setEditedSchedule(const Schedule& schedule) {
  if (!engine_.isLocked()) edited_ = schedule;
  follower_.readSoon();
}

void SettingsModel::saveSchedule() {
  if (isFrozen()) return;
  engine_.updateBlockStart(edited_.blockStartHour, edited_.blockStartMinute);
  engine_.updateWakeTime(edited_.wakeHour, edited_.wakeMinute);
}

void SettingsModel::setEnabled(bool isEnabled) {
  if (!isFrozen()) engine_.setEnabled(isEnabled);
}

void SettingsModel::setLockDuration(LockDuration duration) {
  lockDuration_ = duration;
  follower_.readSoon();
}

std::string SettingsModel::bannerText() const {
  return "Editable again in " + values_.remainingText;
}

std::string SettingsModel::committedText() const {
  return bannerText() + ". Nightly releases still happen at " + values_.nightlyReleaseText + ".";
}

std::string SettingsModel::lockConfirmationMessage() const {
  return "Schedule, enable/disable controls, and physical-key replacement will stay frozen for " +
         std::string(lockDurationText(lockDuration_)) +
         ". The nightly lock still releases each morning.";
}

void SettingsModel::askToLock() {
  showingLockConfirmation_ = true;
  follower_.readSoon();
}

void SettingsModel::confirmCommitmentLock() {
  if (!std::exchange(showingLockConfirmation_, false)) return;
  engine_.activateCommitmentLock(commitmentEnd(lockDuration_, host_.calendar, host_.clock.now()));
  follower_.readSoon();
}

std::string SettingsModel::keyStatusText() const {
  return values_.isKeyConfigured ? "Key configured" : "No key configured";
}

std::string SettingsModel::createKeyText() const {
  return values_.isKeyConfigured ? "Replace USB Key" : "Create USB Key";
}

void SettingsModel::createKey() {
  if (isFrozen()) return;
  if (engine_.isPhysicalKeyConfigured()) {
    showingReplaceKeyConfirmation_ = true;
    follower_.readSoon();
    return;
  }
  engine_.createPhysicalKey();
}

void SettingsModel::confirmReplaceKey() {
  if (!std::exchange(showingReplaceKeyConfirmation_, false)) return;
  follower_.readSoon();
  engine_.createPhysicalKey();
}

void SettingsModel::checkKey() {
  engine_.refreshPhysicalKeyStatus();
}

void SettingsModel::cancelConfirmation() {
  showingLockConfirmation_ = false;
  showingReplaceKeyConfirmation_ = false;
  follower_.readSoon();
}

EnforcementControl SettingsModel::enforcementControl() const {
  const auto status = values_.dashboard.agentStatus;
  if (status == ServiceStatus::enabled) return EnforcementControl::on;
  if (status == ServiceStatus::requiresApproval) return EnforcementControl::approve;
  return EnforcementControl::enable;
}

std::string enforcementControlLabel(EnforcementControl control) {
  switch (control) {
    case EnforcementControl::on:
      return "ON";
    case EnforcementControl::approve:
      return "Approve";
    case EnforcementControl::enable:
      return "Enable";
  }
  return {};
}

void SettingsModel::setFirewallEnabled(bool isEnabled) {
  lunevra::setFirewallEnabled(host_, engine_, isEnabled);
}

void SettingsModel::perform(HardnessAction action) {
  switch (action) {
    case HardnessAction::none:
      return;
    case HardnessAction::openLoginItems:
      return openLoginItems();
    case HardnessAction::installAgent:
      return installEnforcementAgent(engine_);
    case HardnessAction::installHelper:
      return engine_.installFirewallHelper();
    case HardnessAction::uninstallHelper:
      return engine_.uninstallFirewallHelper();
  }
}

void SettingsModel::openLoginItems() {
  if (!host_.services.openLoginItems())
    engine_.setPhysicalKeyMessage("This computer has no settings page for Login Items.");
}

}  // namespace lunevra
