#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>

#include "platform/displays.h"
#include "platform/geometry.h"

namespace lunevra {

enum class WindowStyle : std::uint32_t { borderless = 0, titled = 1 };
enum class BackingStore : std::uint32_t { buffered = 2 };
enum class WindowLevel : int { normal = 0, popUpMenu = 101, screenSaver = 1000 };
enum class AnimationBehavior : int { standard = 0, none = 2 };
enum class WindowColor { windowBackground, black };

/// Bits of a window's place among desktops and other windows.
enum class CollectionBehavior : std::uint32_t {
  standard = 0,
  canJoinAllSpaces = 0x1,
  stationary = 0x10,
  ignoresCycle = 0x40,
  fullScreenAuxiliary = 0x100,
};

constexpr CollectionBehavior operator|(CollectionBehavior left, CollectionBehavior right) {
  return static_cast<CollectionBehavior>(static_cast<std::uint32_t>(left) |
                                         static_cast<std::uint32_t>(right));
}

/// What a window is created with; everything else is set on it afterwards.
struct WindowDescription {
  Rect contentRect;
  WindowStyle styleMask = WindowStyle::borderless;
  BackingStore backing = BackingStore::buffered;
  bool defer = false;
  std::optional<Screen> screen;
  std::string title = {};
  bool canBecomeKey = false;
  bool canBecomeMain = false;
};

/// What a window shows. Made by the user interface for the host that draws it; a host without a
/// screen keeps it and draws nothing.
class WindowContent {
 public:
  virtual ~WindowContent() = default;
};

/// A window of the program. Main thread only. A window shows its background colour from the moment
/// it is ordered in, before any of its content is loaded.
class Window {
 public:
  virtual ~Window() = default;

  virtual void setReleasedWhenClosed(bool released) = 0;
  virtual void setLevel(WindowLevel level) = 0;
  virtual void setCollectionBehavior(CollectionBehavior behavior) = 0;
  virtual void setAnimationBehavior(AnimationBehavior behavior) = 0;
  virtual void setBackgroundColor(WindowColor color) = 0;
  virtual void setOpaque(bool opaque) = 0;
  virtual void setHasShadow(bool hasShadow) = 0;
  virtual void setMovable(bool movable) = 0;
  virtual void setIgnoresMouseEvents(bool ignores) = 0;
  virtual void setContentView(std::shared_ptr<WindowContent> content) = 0;
  virtual void setFrame(const Rect& frame, bool display) = 0;

  virtual void orderFrontRegardless() = 0;
  virtual void orderOut() = 0;
  virtual void makeKeyWindow() = 0;
  /// Orders the window out for good and takes it off the application's list.
  virtual void close() = 0;

  [[nodiscard]] virtual Rect frame() const = 0;
  /// Name of the display it is on; nothing once that display is gone.
  [[nodiscard]] virtual std::optional<std::string> screenName() const = 0;
};

}  // namespace lunevra
