#include "rehearsal/view_rows.h"

#include <initializer_list>

#include "rehearsal/settings_rows.h"
#include "ui/lock_screen/lock_screen_model.h"
#include "ui/lock_screen/lock_screen_texts.h"
#include "ui/menu_bar/menu_bar_model.h"

namespace lunevra::rehearsal {
namespace {

using Rows = std::vector<std::string>;

std::string tintName(MenuTint tint) {
  switch (tint) {
    case MenuTint::primary:
      return {};
    case MenuTint::secondary:
      return "secondary";
    case MenuTint::green:
      return "green";
    case MenuTint::orange:
      return "orange";
  }
  return {};
}

std::string menuRowText(const MenuRow& row) {
  const bool isControl = row.kind == MenuRowKind::toggle || row.kind == MenuRowKind::button;
  switch (row.kind) {
    case MenuRowKind::divider:
      return "---";
    case MenuRowKind::header:
      return annotated(row.text + "  " + row.detail, {row.symbolName});
    case MenuRowKind::label:
    case MenuRowKind::toggle:
    case MenuRowKind::button:
      break;
  }
  return annotated(row.text, {row.symbolName, tintName(row.tint),
                              row.kind == MenuRowKind::button   ? "button"
                              : row.kind == MenuRowKind::toggle ? onOff(row.isChecked)
                                                                : "",
                              isControl && !row.isEnabled ? "disabled" : ""});
}

Rows menuRows(Night& night) {
  const MenuBarModel menu(night.computer().time, night.engine(), {});
  Rows rows;
  for (const auto& row : menu.rows())
    if (row.isShown) rows.push_back(menuRowText(row));
  return rows;
}

Rows countdownRows(const LockScreenModel& screen) {
  namespace text = lock_screen_text;
  return {annotated(text::blockingIn, {"moon.zzz.fill"}), std::to_string(screen.countdownValue()),
          annotated(text::lockingUntilMorning, {"lock.fill"}), std::string(text::onlyTheKey)};
}

Rows ambientRows(const LockScreenModel& screen) {
  namespace text = lock_screen_text;
  Rows rows{annotated(text::title, {"moon.stars.fill"}), screen.clockText(),
            std::string(text::timeToRest)};
  if (const auto& commitment = screen.commitmentText())
    rows.push_back(annotated(*commitment, {"lock.fill"}));
  if (const auto& quote = screen.currentQuote()) {
    rows.push_back(quote->text);
    rows.push_back("— " + quote->author);
  }
  rows.push_back(annotated(screen.lockedUntilText(), {"lock.fill"}));
  rows.push_back(annotated(screen.hintText(), {"externaldrive.fill"}));
  return rows;
}

Rows lockScreenRows(Night& night) {
  // A quote of its own: drawing one from the night would change what the night draws next.
  SeededRandom random;
  const auto host = night.computer().host();
  const Host looking{host.clock,     host.calendar, host.runLoop,  host.notificationCenter,
                     host.defaults,  host.cloud,    host.log,      random,
                     host.keychain,  host.volumes,  host.services, host.helperConnector,
                     host.openPanels};
  const LockScreenModel screen(looking, night.computer().time, night.engine());
  switch (screen.screen()) {
    case PhaseScreen::none:
      return {};
    case PhaseScreen::countdown:
      return countdownRows(screen);
    case PhaseScreen::ambient:
      return ambientRows(screen);
  }
  return {};
}

}  // namespace

View takeView(Words& words) {
  for (const auto view : {View::menu, View::dashboard, View::lockScreen, View::settings})
    if (words.takeIf(viewName(view))) return view;
  throw MalformedScript("menu, dashboard, lock-screen or settings is wanted");
}

std::string viewName(View view) {
  switch (view) {
    case View::menu:
      return "menu";
    case View::dashboard:
      return "dashboard";
    case View::lockScreen:
      return "lock-screen";
    case View::settings:
      return "settings";
  }
  return {};
}

std::vector<std::string> rowsOf(View view, Night& night) {
  switch (view) {
    case View::menu:
      return menuRows(night);
    case View::dashboard:
      return dashboardRows(night);
    case View::lockScreen:
      return lockScreenRows(night);
    case View::settings:
      return settingsRows(night);
  }
  return {};
}

}  // namespace lunevra::rehearsal
