#include "shell/daytime_scenes.h"

#include <algorithm>
#include <utility>

namespace lunevra {
namespace {

constexpr double settingsWidth = 520;
constexpr double settingsHeight = 760;
constexpr double menuWidth = 250;
constexpr double panels = 64;  // points of a low display that belong to panels and title bars

}  // namespace

DaytimeScenes::DaytimeScenes(const Desktop& desktop, DaytimeContents contents)
    : desktop_(desktop), contents_(std::move(contents)) {}

DaytimeScenes::~DaytimeScenes() {
  for (const auto& window : {settings_, menu_})
    if (window) window->close();
}

void DaytimeScenes::openSettings(ShutdownManager& engine) {
  if (!contents_.settings || engine.currentState() != BlockingState::idle) return;
  if (!settings_) {
    settings_ = desktop_.application.makeWindow({.contentRect = settingsFrame(),
                                                 .styleMask = WindowStyle::titled,
                                                 .screen = desktop_.displays.mainScreen(),
                                                 .title = "Lunevra",
                                                 .canBecomeKey = true,
                                                 .canBecomeMain = true});
    settings_->setContentView(contents_.settings(engine, actions(engine)));
  } else if (desktop_.application.keyWindow() != settings_) {
    settings_->setFrame(settingsFrame(), true);  // to the display where the person is now
  }
  settings_->orderFrontRegardless();
  settings_->makeKeyWindow();
}

void DaytimeScenes::bringMenuForward(ShutdownManager& engine) {
  const auto screen = desktop_.displays.mainScreen();
  const auto display = screen ? screen->frame : Rect{};
  openMenu(engine, display.x + display.width / 2, display.y + display.height / 3);
}

void DaytimeScenes::openMenu(ShutdownManager& engine, double x, double y) {
  if (!contents_.menu || engine.currentState() != BlockingState::idle) return;
  if (!menu_) {
    menu_ = desktop_.application.makeWindow(
        {.contentRect = {}, .screen = {}, .title = "Lunevra", .canBecomeKey = true});
    menu_->setLevel(WindowLevel::popUpMenu);
    menu_->setContentView(contents_.menu(engine, actions(engine)));
  }
  // As high as it is; the content settles how much of the desktop it takes.
  menu_->setFrame({x - menuWidth / 2, y, menuWidth, 1}, false);
  menu_->orderFrontRegardless();
  menu_->makeKeyWindow();
}

SceneActions DaytimeScenes::actions(ShutdownManager& engine) {
  return {.openSettings = [this, &engine] { openSettings(engine); },
          .closeSettings = [this] { settings_->orderOut(); },
          .closeMenu = [this] { menu_->orderOut(); }};
}

Rect DaytimeScenes::settingsFrame() const {
  const auto screen = desktop_.displays.mainScreen();
  if (!screen) return {0, 0, settingsWidth, settingsHeight};
  const auto& display = screen->frame;
  const double height = std::min(settingsHeight, display.height - panels);
  return {display.x + (display.width - settingsWidth) / 2,
          display.y + (display.height - height) / 2, settingsWidth, height};
}

}  // namespace lunevra
