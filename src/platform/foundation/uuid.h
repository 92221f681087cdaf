#pragma once

#include <array>
#include <cstdint>
#include <string>

namespace lunevra {

/// The canonical upper-case text of a random (version 4) UUID made from these 16 random bytes.
[[nodiscard]] std::string randomUuidText(std::array<std::uint8_t, 16> bytes);

}  // namespace lunevra
