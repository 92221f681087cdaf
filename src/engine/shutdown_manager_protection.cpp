#include <utility>

#include "engine/shutdown_manager.h"
#include "store/settings_keys.h"

namespace lunevra {

void ShutdownManager::setPhysicalKeyMessage(std::string message) {
  change(physicalKeyMessage_, std::move(message));
}

void ShutdownManager::pollPhysicalKey() {
  const auto volumeName = keyManager_.findMountedMatchingKey();
  change(isPhysicalKeyConfigured_, keyManager_.loadFingerprint().has_value());
  change(isPhysicalKeyMounted_, volumeName.has_value());
  if (currentState_ != BlockingState::idle && volumeName) acceptPhysicalKey(*volumeName);
}

void ShutdownManager::refreshPhysicalKeyStatus() {
  change(isPhysicalKeyConfigured_, keyManager_.loadFingerprint().has_value());
  const auto volumeName = keyManager_.findMountedMatchingKey();
  change(isPhysicalKeyMounted_, volumeName.has_value());
  if (volumeName)
    setPhysicalKeyMessage("Matching physical key detected on " + *volumeName + ".");
  else if (isPhysicalKeyConfigured_)
    setPhysicalKeyMessage("Physical key is configured but not connected.");
  else
    setPhysicalKeyMessage(
        "No physical key configured. The nightly lock will end only at wake time.");
}

void ShutdownManager::acceptPhysicalKey(const std::string& volumeName) {
  const auto until = latch_.until().value_or(nextWakeDate(host_.clock.now()));
  const auto time = timeText(until);
  override_.set(until);
  latch_.remove();
  store_.recordActiveUnlock(until);
  firewall_.clearBlock(unlockGeneration(), logsFailure("Lunevra: firewall clearBlock failed — "));
  setPhysicalKeyMessage("Physical key accepted from " + volumeName +
                        ". This Mac is released until " + time + ".");
  endLockForOverride();
}

void ShutdownManager::createPhysicalKey() {
  if (refusesKeyCreation()) return;
  host_.openPanels.chooseFolder(
      {.title = "Choose the USB drive for your Lunevra key",
       .message = "The drive must be directly connected and writable. Creating a new key "
                  "invalidates the previous one.",
       .prompt = "Create Physical Key",
       .startDirectory = "/Volumes"},
      lifetime_.guard([this](const std::optional<std::string>& folder) {
        // A panel that was left open must not outwit the night that has begun since.
        if (folder && !refusesKeyCreation()) createKeyOn(*folder);
      }));
}

bool ShutdownManager::refusesKeyCreation() {
  if (currentState_ != BlockingState::idle)
    setPhysicalKeyMessage("The physical key cannot be changed during an active lock.");
  else if (isLocked_)
    setPhysicalKeyMessage("Settings are commitment-locked. Wait until the commitment ends.");
  else
    return false;
  return true;
}

void ShutdownManager::createKeyOn(const std::string& folder) {
  std::string message;
  try {
    message = "Physical key created on " + keyManager_.createKey(folder) +
              ". Eject it and give it to someone you trust.";
  } catch (const LocalizedError& error) {
    message = error.localizedDescription();
  }
  refreshPhysicalKeyStatus();
  setPhysicalKeyMessage(std::move(message));
}

void ShutdownManager::startFirewallBlock(Instant until) {
  if (!firewall_.isArmed()) return;
  firewall_.startBlock(until, unlockGeneration(),
                       logsFailure("Lunevra: firewall startBlock failed — "));
}

void ShutdownManager::installFirewallHelper() {
  try {
    firewall_.installHelper();
    setPhysicalKeyMessage("Firewall helper installed. Approve it in System Settings if prompted.");
  } catch (const LocalizedError& error) {
    setPhysicalKeyMessage("Firewall helper install failed: " + error.localizedDescription());
  }
  willChange_.notify();  // the service's status is no property, but views read it
}

void ShutdownManager::uninstallFirewallHelper() {
  try {
    firewall_.uninstallHelper();
  } catch (const LocalizedError& error) {
    setPhysicalKeyMessage("Firewall helper uninstall failed: " + error.localizedDescription());
  }
  willChange_.notify();
}

std::int64_t ShutdownManager::unlockGeneration() const {
  return store_.integer(settings_key::activeUnlockGeneration, 0);
}

FirewallHelperClient::Completion ShutdownManager::logsFailure(std::string prefix) const {
  return [&log = host_.log, prefix = std::move(prefix)](bool success,
                                                        const std::optional<std::string>& message) {
    if (!success && message) log.line(prefix + *message);
  };
}

}  // namespace lunevra
