#pragma once

#include <iosfwd>
#include <string>

#include "rehearsal/script.h"

namespace lunevra::rehearsal {

/// Plays the script with real windows on `$DISPLAY`, virtual time running `speed` times as fast as
/// real time, a countdown at most at speed 1. With a folder, a picture of each display is saved
/// there half a second after each change of the phase and once half-way through a lock. The
/// displays are the real ones, whatever the script plugs in. Throws LocalizedError if there is no
/// screen.
[[nodiscard]] Tally show(const Script& script, double speed, const std::string& pictures,
                         std::ostream& out);

}  // namespace lunevra::rehearsal
