#include "platform/x11/x_connection.h"

#include <cstdlib>
#include <string>

#include "platform/localized_error.h"

namespace lunevra {
namespace {

const xcb_screen_t* screenAt(xcb_connection_t* connection, int index) {
  auto screens = xcb_setup_roots_iterator(xcb_get_setup(connection));
  for (; index > 0 && screens.rem > 1; --index) xcb_screen_next(&screens);
  return screens.data;
}

}  // namespace

XConnection XConnection::open() {
  XConnection opened;
  opened.connection.reset(xcb_connect(nullptr, &opened.screenIndex));
  if (opened.isLost()) {
    const char* display = std::getenv("DISPLAY");
    throw LocalizedError(display == nullptr || *display == '\0'
                             ? std::string("There is no X display: DISPLAY is not set.")
                             : "The X display " + std::string(display) + " cannot be reached.");
  }
  opened.screen = screenAt(opened.get(), opened.screenIndex);
  return opened;
}

}  // namespace lunevra
