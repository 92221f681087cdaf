#pragma once

#include <xcb/xcb.h>

namespace lunevra {

/// The connection that Qt's windows live on. Needs the application object with the xcb platform.
[[nodiscard]] xcb_connection_t* qtConnection();

}  // namespace lunevra
