#pragma once

#include <initializer_list>
#include <string>
#include <string_view>
#include <vector>

#include "rehearsal/night.h"

namespace lunevra::rehearsal {

/// A row's text with remarks in brackets; empty remarks are left out.
[[nodiscard]] std::string annotated(std::string_view text,
                                    std::initializer_list<std::string_view> remarks);
[[nodiscard]] std::string_view onOff(bool isOn);

[[nodiscard]] std::vector<std::string> dashboardRows(Night& night);
[[nodiscard]] std::vector<std::string> settingsRows(Night& night);

}  // namespace lunevra::rehearsal
