#pragma once

#include <cstdint>
#include <string>
#include <variant>
#include <vector>

#include "platform/instant.h"

namespace lunevra {

/// A value as settings stores keep it; the type is part of the value.
using StoredValue =
    std::variant<std::int64_t, bool, double, Instant, std::string, std::vector<std::string>>;

}  // namespace lunevra
