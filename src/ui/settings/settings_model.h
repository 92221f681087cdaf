#pragma once

#include <functional>
#include <optional>
#include <string>

#include "engine/commitment.h"
#include "ui/engine_follower.h"
#include "ui/settings/hardness_dashboard.h"

namespace lunevra {

/// The control at the end of the background-enforcement row.
enum class EnforcementControl : std::uint8_t { on, approve, enable };

/// What the engine and the computer say to the settings window, read in one go.
struct SettingsValues {
  bool isCommitted = false;
  bool isIdle = true;
  bool isEnabled = true;
  std::string remainingText;       ///< of the commitment, for example "6d 5h"
  std::string nightlyReleaseText;  ///< the stored wake time, for example "6:30 AM"
  bool isKeyConfigured = false;
  bool isKeyMounted = false;
  std::string message;
  HardnessDashboard dashboard;
};

/// The settings window: a local copy of the schedule, which reaches the engine only when it is
/// saved, and everything else as the engine has it. Every value stays as it is between two calls of
/// the observers, who are told after a change. Main thread only.
///
/// An action whose control is disabled does nothing, also where the change that disabled it has not
/// been drawn yet.
class SettingsModel {
 public:
  /// Everything given outlives the model; `dismiss` closes the window. Reads the engine's values;
  /// the schedule's copy and the state of the key are those of `loadFromEngine`.
  SettingsModel(const Host& host, ShutdownManager& engine, std::function<void()> dismiss);

  /// Each time the window is shown.
  void loadFromEngine();
  /// The part of it that only reads.
  void copySchedule();
  /// While drawn, what goes by without the engine changing is read every few seconds.
  void setDrawn(bool isDrawn) { follower_.setDrawn(isDrawn); }
  [[nodiscard]] Registration observeChanges(std::function<void()> changed) {
    return follower_.observeChanges(std::move(changed));
  }
  void dismiss() const { dismiss_(); }

  [[nodiscard]] const SettingsValues& values() const { return values_; }

  // Schedule.
  [[nodiscard]] const Schedule& editedSchedule() const { return edited_; }
  void setEditedSchedule(const Schedule& schedule);
  [[nodiscard]] bool canEditSchedule() const { return !values_.isCommitted; }
  /// Also whether the switch and the creation of a key are enabled.
  [[nodiscard]] bool canChangeProtection() const { return !values_.isCommitted && values_.isIdle; }
  void saveSchedule();
  void setEnabled(bool isEnabled);

  // Commitment.
  [[nodiscard]] LockDuration lockDuration() const { return lockDuration_; }
  void setLockDuration(LockDuration duration);
  [[nodiscard]] std::string bannerText() const;
  [[nodiscard]] std::string committedText() const;
  [[nodiscard]] std::string lockConfirmationMessage() const;
  [[nodiscard]] bool isShowingLockConfirmation() const { return showingLockConfirmation_; }
  void askToLock();
  void confirmCommitmentLock();

  // Physical key.
  [[nodiscard]] std::string keyStatusText() const;
  [[nodiscard]] std::string createKeyText() const;
  [[nodiscard]] bool isShowingReplaceKeyConfirmation() const {
    return showingReplaceKeyConfirmation_;
  }
  /// Asks first if there is a key already.
  void createKey();
  void confirmReplaceKey();
  void checkKey();

  /// Closes whichever confirmation is shown; nothing else happens.
  void cancelConfirmation();

  // Protection layers.
  [[nodiscard]] EnforcementControl enforcementControl() const;
  void setFirewallEnabled(bool isEnabled);
  void perform(HardnessAction action);

 private:
  void read();
  [[nodiscard]] bool isFrozen() const;
  void openLoginItems();

  Host host_;
  ShutdownManager& engine_;
  std::function<void()> dismiss_;
  SettingsValues values_;
  Schedule edited_;
  LockDuration lockDuration_ = LockDuration::oneWeek;
  bool showingLockConfirmation_ = false;
  bool showingReplaceKeyConfirmation_ = false;
  EngineFollower follower_;
};

/// The label of the control; "ON" is none that can be pressed.
[[nodiscard]] std::string enforcementControlLabel(EnforcementControl control);

}  // namespace lunevra
