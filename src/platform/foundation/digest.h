#pragma once

#include <cstdint>
#include <span>
#include <vector>

namespace lunevra {

/// The 32 bytes of the SHA-256 digest.
[[nodiscard]] std::vector<std::uint8_t> sha256(std::span<const std::uint8_t> bytes);

}  // namespace lunevra
