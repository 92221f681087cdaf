#pragma once

#include "platform/linux/linux_paths.h"
#include "platform/log.h"
#include "platform/x11/floor_window.h"

namespace lunevra {

/// Covers the screen at once if the stores say that a night is running and not released: the
/// toolkit, and the engine, which decides, take a while to be there. Then takes away the cover that
/// a killed process has left; uncovers nothing else.
void coverRunningNight(const LinuxPaths& paths, bool isAgentStart, FloorWindow& floor, Log& log);

}  // namespace lunevra
