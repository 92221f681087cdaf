#include "ui/menu_bar/menu_bar_model.h"

#include <utility>

namespace lunevra {
namespace {

std::string bedtimeText(const ShutdownManager& engine) {
  const auto schedule = engine.schedule();
  return "Blocks at " + formatTime12Hour(schedule.blockStartHour, schedule.blockStartMinute);
}

std::string releaseText(const ShutdownManager& engine) {
  return "Releases at " + engine.lockEndTimeText();
}

}  // namespace

std::string tonightText(const ShutdownManager& engine) {
  return bedtimeText(engine) + ". " + releaseText(engine) + ".";
}

MenuBarModel::MenuBarModel(RunLoop& runLoop, ShutdownManager& engine, Actions actions)
    : engine_(engine),
      actions_(std::move(actions)),
      follower_(runLoop, engine, [this] { read(); }) {
  read();
}

void MenuBarModel::read() {
  rows_[MenuItem::header] = header();
  rows_[MenuItem::bedtime] = {
      .kind = MenuRowKind::label, .text = bedtimeText(engine_), .symbolName = "moon.zzz"};
  rows_[MenuItem::release] = {
      .kind = MenuRowKind::label, .text = releaseText(engine_), .symbolName = "sunrise"};
  rows_[MenuItem::escapeKey] = escapeKey();
  rows_[MenuItem::commitment] = commitment();
  rows_[MenuItem::nightlySwitch] = nightlySwitch();
  rows_[MenuItem::settings] = {.kind = MenuRowKind::button,
                               .text = "Settings",
                               .symbolName = "gearshape",
                               .isEnabled = isIdle()};
  rows_[MenuItem::quit] = quitRow();
}

MenuRow MenuBarModel::header() const {
  return {.kind = MenuRowKind::header,
          .text = "Lunevra",
          .detail = isIdle() ? "Ready for tonight" : "Locked until morning",
          .symbolName = "moon.stars.fill"};
}

MenuRow MenuBarModel::escapeKey() const {
  if (engine_.isPhysicalKeyConfigured())
    return {.kind = MenuRowKind::label,
            .text = "USB escape key ready",
            .symbolName = "externaldrive.fill.badge.checkmark",
            .tint = MenuTint::green};
  return {.kind = MenuRowKind::label,
          .text = "No USB escape key",
          .symbolName = "externaldrive.badge.xmark",
          .tint = MenuTint::orange};
}

MenuRow MenuBarModel::commitment() const {
  return {.kind = MenuRowKind::label,
          .text = "Settings locked: " + engine_.commitmentTimeRemainingText(),
          .symbolName = "lock.fill",
          .tint = MenuTint::orange,
          .isShown = engine_.isLocked()};
}

MenuRow MenuBarModel::nightlySwitch() const {
  return {.kind = MenuRowKind::toggle,
          .text = "Enable nightly lock",
          .symbolName = engine_.isEnabled() ? "checkmark.circle.fill" : "circle",
          .isEnabled = !engine_.isLocked() && isIdle(),
          .isChecked = engine_.isEnabled()};
}

MenuRow MenuBarModel::quitRow() const {
  if (!isIdle())
    return {.kind = MenuRowKind::label,
            .text = "No on-screen unlock",
            .symbolName = "lock.shield.fill",
            .tint = MenuTint::secondary};
  if (engine_.shouldPreventQuit())
    return {.kind = MenuRowKind::label,
            .text = "Scheduler protected — disable the nightly lock to quit",
            .symbolName = "shield.lefthalf.filled",
            .tint = MenuTint::secondary};
  return {.kind = MenuRowKind::button, .text = "Quit", .symbolName = "power"};
}

bool MenuBarModel::isIdle() const {
  return engine_.currentState() == BlockingState::idle;
}

// The engine is asked, not the rows: what was pressed may be out of date by now.
void MenuBarModel::setEnabled(bool isEnabled) {
  if (nightlySwitch().isEnabled) engine_.setEnabled(isEnabled);
}

void MenuBarModel::openSettings() {
  if (isIdle()) actions_.openSettings();
}

void MenuBarModel::quit() {
  if (quitRow().kind == MenuRowKind::button) actions_.terminate();
}

}  // namespace lunevra
