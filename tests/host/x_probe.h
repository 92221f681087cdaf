#pragma once

#include <array>
#include <memory>
#include <string>
#include <vector>
#include <xcb/xcb.h>

namespace lunevra::host_test {

/// Another program on the display: paints the desktop in a bright colour, opens windows, and looks
/// at what a person would see.
class XProbe {
 public:
  explicit XProbe(const std::string& display);

  /// Nothing of the bright colour is left on the whole screen, and nearly all of it is dark.
  [[nodiscard]] bool isCovered() const;
  /// The same for one point, quickly.
  [[nodiscard]] bool isBright(int x, int y) const;
  /// Whether a visible window has exactly that place.
  [[nodiscard]] bool hasWindowAt(int x, int y, int width, int height) const;
  [[nodiscard]] std::size_t visibleWindowCount() const { return visibleWindows().size(); }
  /// The visible window that is larger than the screen.
  [[nodiscard]] xcb_window_t floor() const;

  /// Opens a bright window over the whole screen, in front of everything at that moment.
  xcb_window_t openWindow(bool isOverrideRedirect) const;
  void raise(xcb_window_t window) const;
  /// Asks the window manager for it.
  void makeFullscreen(xcb_window_t window) const;
  void destroy(xcb_window_t window) const;

  /// Opens a window that has the keyboard, types and clicks as a person would, and counts what any
  /// of this program's windows has received.
  void focusWindow() const;
  void typeAndClick() const;
  void clickAt(int x, int y) const;
  [[nodiscard]] int inputReceived() const;

  /// True if this program gets the keyboard and the pointer; it then keeps them until `release`.
  [[nodiscard]] bool takesInput() const;
  void release() const;
  /// Whether another program holds both.
  [[nodiscard]] bool isInputHeld() const;
  /// Number of key actions by which the server itself switches terminals, ends or breaks grabs.
  [[nodiscard]] int serverKeyActions() const;
  [[nodiscard]] bool isManaged() const;
  [[nodiscard]] bool isComposited() const;
  /// Goes to another of the window manager's desktops, as a pager does, or says so in its place.
  void switchDesktop(std::uint32_t number) const;

 private:
  struct Place {
    xcb_window_t window;
    int x, y, width, height;
  };
  struct Disconnect {
    void operator()(xcb_connection_t* connection) const { xcb_disconnect(connection); }
  };
  [[nodiscard]] std::vector<Place> visibleWindows() const;
  void askWindowManager(xcb_window_t window, const std::string& message,
                        std::array<std::uint32_t, 2> data) const;
  [[nodiscard]] xcb_atom_t atom(const std::string& name) const;
  [[nodiscard]] int grabKeyboard() const;
  [[nodiscard]] int grabPointer() const;

  std::unique_ptr<xcb_connection_t, Disconnect> connection_;
  xcb_window_t root_;
};

}  // namespace lunevra::host_test
