#pragma once

#include <functional>
#include <memory>

#include "shell/app_delegate.h"
#include "shell/daytime_scenes.h"

namespace lunevra {

/// The program's description: one engine and one delegate, kept for the life of the process, and
/// the scenes that share the engine. The engine is made on first need.
class TorvaneApp {
 public:
  using EngineFactory = std::function<std::unique_ptr<ShutdownManager>()>;

  TorvaneApp(const Host& host, const Desktop& desktop, LockContentFactory lockContent,
             DaytimeContents daytime, EngineFactory makeEngine);

  /// Constructs the engine, which evaluates the schedule at once, then finishes launching.
  void launch();
  /// The window group's content appeared, for the first or a further time.
  void windowGroupContentAppeared();

  /// The settings scene, and the menu-bar extra's menu next to a place on the desktop. Neither
  /// opens while the lock is up.
  void openSettings() { scenes_.openSettings(shutdownManager()); }
  void openMenu(double x, double y) { scenes_.openMenu(shutdownManager(), x, y); }

  ShutdownManager& shutdownManager();
  [[nodiscard]] AppDelegate& appDelegate() { return appDelegate_; }

 private:
  EngineFactory makeEngine_;
  std::unique_ptr<ShutdownManager> shutdownManager_;
  AppDelegate appDelegate_;  // after the engine that it refers to
  DaytimeScenes scenes_;     // ... and so do these
};

}  // namespace lunevra
