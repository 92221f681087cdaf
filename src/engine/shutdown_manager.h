#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "engine/blocking_state.h"
#include "engine/evaluation.h"
#include "engine/night_latch.h"
#include "engine/schedule.h"
#include "physical_key/physical_key_manager.h"
#include "platform/host.h"
#include "platform/lifetime.h"
#include "platform/observer_list.h"
#include "protection/enforcement_agent.h"
#include "protection/firewall_helper_client.h"
#include "store/synced_store.h"

namespace lunevra {

/// The one lock engine: decides from clock, schedule, night latch and physical key which phase the
/// computer is in, and is the one observable state that shell and views read.
///
/// Main thread only. Observers are told before each change of an observable property, so they read
/// the new values on a later turn of the main loop. The phase leaves the lock only through
/// `returnToIdle` and `endLockForOverride`.
class ShutdownManager {
 public:
  /// The store, the key manager and the firewall client outlive the engine.
  ShutdownManager(const Host& host, SyncedStore& store, PhysicalKeyManager& keyManager,
                  FirewallHelperClient& firewall);
  ~ShutdownManager() = default;
  ShutdownManager(const ShutdownManager&) = delete;
  ShutdownManager& operator=(const ShutdownManager&) = delete;

  // Observable properties.
  [[nodiscard]] BlockingState currentState() const { return currentState_; }
  [[nodiscard]] std::int64_t countdownValue() const { return countdownValue_; }
  [[nodiscard]] bool isBlockingTime() const { return isBlockingTime_; }
  [[nodiscard]] bool isEnabled() const { return isEnabled_; }
  [[nodiscard]] bool isLocked() const { return isLocked_; }
  [[nodiscard]] std::optional<Instant> lockEndDate() const { return lockEndDate_; }
  [[nodiscard]] bool isPhysicalKeyConfigured() const { return isPhysicalKeyConfigured_; }
  [[nodiscard]] bool isPhysicalKeyMounted() const { return isPhysicalKeyMounted_; }
  [[nodiscard]] const std::string& physicalKeyMessage() const { return physicalKeyMessage_; }
  [[nodiscard]] Registration observeChanges(std::function<void()> willChange);
  /// Tells the observers of something that views read and that is no property of the engine.
  void announceChange() const { willChange_.notify(); }

  // Schedule.
  /// Read afresh from the standard defaults; every field within its range.
  [[nodiscard]] Schedule schedule() const;
  [[nodiscard]] bool isWithinBlockingWindow(Instant instant) const;
  [[nodiscard]] Instant nextWakeDate(Instant after) const;
  void evaluateSchedule();
  /// Ignored during a commitment and while the lock is up.
  void updateBlockStart(std::int64_t hour, std::int64_t minute);
  void updateWakeTime(std::int64_t hour, std::int64_t minute);
  /// The schedule's switch. During a commitment the change is not kept.
  void setEnabled(bool isEnabled);
  /// End of the current lock on the 12-hour clock.
  [[nodiscard]] std::string lockEndTimeText() const;
  /// Whether a request to quit is refused although the lock is not up.
  [[nodiscard]] bool shouldPreventQuit() const;

  // The night that has started.
  [[nodiscard]] std::optional<Instant> activeNightLockUntil() const { return latch_.until(); }
  [[nodiscard]] std::optional<Instant> physicalOverrideUntil() const { return override_.until(); }
  [[nodiscard]] bool isPhysicalOverrideActive() const;

  // Commitment.
  void activateCommitmentLock(Instant until);
  void refreshCommitmentState();
  [[nodiscard]] std::string commitmentTimeRemainingText() const;

  // Physical key.
  void pollPhysicalKey();
  void refreshPhysicalKeyStatus();
  /// Asks for a drive and makes a key on it; refused with a message during a lock or a commitment.
  void createPhysicalKey();

  // Protection layers.
  [[nodiscard]] bool isFirewallProtectionActive() const { return firewall_.isArmed(); }
  void installFirewallHelper();
  void uninstallFirewallHelper();
  /// Throws LocalizedError.
  void installEnforcementAgent() { agent_.install(); }
  /// One line of status for the person, for results that have no property of their own.
  void setPhysicalKeyMessage(std::string message);

 private:
  // Settings.
  void applySyncedState();
  void syncedStoreChanged();
  void handleEnableSwitch();
  [[nodiscard]] std::int64_t preference(const ScheduleField& field) const;
  void setPreference(const ScheduleField& field, std::int64_t value);
  void updateTime(const ScheduleField& hourField, std::int64_t hour,
                  const ScheduleField& minuteField, std::int64_t minute);

  // Transitions.
  void carryOut(EvaluationStep step);
  void beginCountdown();
  void countdownTick();
  void countdownFinished();
  void returnToIdle();
  void endLockForOverride();
  void enter(BlockingState state);
  void latchNightLock();
  /// Whether a night still runs.
  bool clearExpiredNightLock();
  /// Whether a release still is in force.
  bool clearExpiredPhysicalOverride();
  void acceptPhysicalKey(const std::string& volumeName);
  void startFirewallBlock(Instant until);
  void startTimeCheckTimer();
  void startPhysicalKeyTimer();

  /// Assigns an observable property, telling observers before a change.
  template <class T>
  void change(T& property, T value) {
    if (property == value) return;
    willChange_.notify();
    property = std::move(value);
  }
  /// Says why, if it does.
  [[nodiscard]] bool refusesKeyCreation();
  void createKeyOn(const std::string& folder);
  [[nodiscard]] std::string timeText(Instant instant) const;
  [[nodiscard]] std::int64_t unlockGeneration() const;
  /// Logs a failure of the helper that came with a message.
  [[nodiscard]] FirewallHelperClient::Completion logsFailure(std::string prefix) const;

  Host host_;
  SyncedStore& store_;
  PhysicalKeyManager& keyManager_;
  FirewallHelperClient& firewall_;
  EnforcementAgent agent_;
  ObserverList willChange_;

  BlockingState currentState_ = BlockingState::idle;
  std::int64_t countdownValue_ = 3;
  bool isBlockingTime_ = false;
  bool isEnabled_ = true;
  bool isLocked_ = false;
  std::optional<Instant> lockEndDate_;
  bool isPhysicalKeyConfigured_ = false;
  bool isPhysicalKeyMounted_ = false;
  std::string physicalKeyMessage_ = "No physical key configured.";

  Registration timeCheckTimer_;
  Registration countdownTimer_;
  Registration physicalKeyTimer_;
  bool isApplyingSyncedState_ = false;
  NightLatch latch_;
  PhysicalOverride override_;
  Registration storeObservation_;
  Lifetime lifetime_;
};

}  // namespace lunevra
