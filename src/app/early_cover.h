#pragma once

#include "platform/desktop/floor_window.h"
#include "platform/linux/linux_paths.h"
#include "platform/log.h"

namespace lunevra {

/// Covers the screen at once if the stores say that a night is running and not released: the
/// toolkit, and the engine, which decides, take a while to be there. Never uncovers.
void coverRunningNight(const LinuxPaths& paths, FloorWindow& floor, Log& log);

}  // namespace lunevra
