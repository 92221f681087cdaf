#pragma once

#include <string_view>
#include <xcb/xcb.h>

namespace lunevra {

/// The server's number for a name; none if the server cannot be asked.
[[nodiscard]] xcb_atom_t atomNamed(xcb_connection_t* connection, std::string_view name);

}  // namespace lunevra
