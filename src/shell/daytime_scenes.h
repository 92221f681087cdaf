#pragma once

#include <functional>
#include <memory>

#include "engine/shutdown_manager.h"
#include "platform/host.h"

namespace lunevra {

/// What the views by day ask of the shell.
struct SceneActions {
  std::function<void()> openSettings;
  std::function<void()> closeSettings;
  std::function<void()> closeMenu;
};

/// Makes a window's content for the engine.
using SceneContentFactory =
    std::function<std::shared_ptr<WindowContent>(ShutdownManager&, const SceneActions&)>;

/// The views of the scenes that the person opens; made by the user interface, either may be absent.
struct DaytimeContents {
  SceneContentFactory settings;
  SceneContentFactory menu;
};

/// The settings window and the menu of the menu-bar extra. Both are refused while the lock is up;
/// the lock hides them like every other window, and they stay hidden until they are opened again.
class DaytimeScenes {
 public:
  /// The desktop outlives the scenes.
  DaytimeScenes(const Desktop& desktop, DaytimeContents contents);
  ~DaytimeScenes();
  DaytimeScenes(const DaytimeScenes&) = delete;
  DaytimeScenes& operator=(const DaytimeScenes&) = delete;

  /// Opens the window or brings it forward.
  void openSettings(ShutdownManager& engine);
  /// Opens the menu next to this place on the desktop, in points.
  void openMenu(ShutdownManager& engine, double x, double y);

 private:
  [[nodiscard]] SceneActions actions(ShutdownManager& engine);
  [[nodiscard]] Rect settingsFrame() const;

  Desktop desktop_;
  DaytimeContents contents_;
  std::shared_ptr<Window> settings_;
  std::shared_ptr<Window> menu_;
};

}  // namespace lunevra
