#pragma once

#include <memory>
#include <xcb/xcb.h>

namespace lunevra {

/// A connection of our own to the X server that DISPLAY names, and the screen meant there.
struct XConnection {
  /// Throws LocalizedError if the server cannot be reached or takes nobody any more.
  static XConnection open();

  [[nodiscard]] xcb_connection_t* get() const { return connection.get(); }
  [[nodiscard]] bool isLost() const { return xcb_connection_has_error(get()) != 0; }

  struct Disconnect {
    void operator()(xcb_connection_t* open) const { xcb_disconnect(open); }
  };
  std::unique_ptr<xcb_connection_t, Disconnect> connection;
  const xcb_screen_t* screen = nullptr;
  int screenIndex = 0;
};

}  // namespace lunevra
