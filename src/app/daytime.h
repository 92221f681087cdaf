#pragma once

#include "shell/daytime_scenes.h"

namespace lunevra {

/// The views of the scenes that the person opens, over this host, which outlives them.
[[nodiscard]] DaytimeContents daytimeContents(const Host& host);

}  // namespace lunevra
