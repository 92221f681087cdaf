#pragma once

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
  /// Whether a visible window has exactly that place.
  [[nodiscard]] bool hasWindowAt(int x, int y, int width, int height) const;
  /// The visible window that is larger than any screen.
  [[nodiscard]] xcb_window_t floor() const;

  /// Opens a bright window over the whole screen, in front of everything at that moment.
  xcb_window_t openWindow(bool isOverrideRedirect) const;
  void raise(xcb_window_t window) const;
  void destroy(xcb_window_t window) const;

  /// True if this program gets the keyboard and the pointer; it then keeps them until `release`.
  [[nodiscard]] bool takesInput() const;
  void release() const;
  /// Whether another program holds both.
  [[nodiscard]] bool isInputHeld() const;

 private:
  struct Place {
    xcb_window_t window;
    int x, y, width, height;
  };
  struct Disconnect {
    void operator()(xcb_connection_t* connection) const { xcb_disconnect(connection); }
  };
  [[nodiscard]] std::vector<Place> visibleWindows() const;
  [[nodiscard]] int grabKeyboard() const;
  [[nodiscard]] int grabPointer() const;

  std::unique_ptr<xcb_connection_t, Disconnect> connection_;
  xcb_window_t root_;
};

}  // namespace lunevra::host_test
