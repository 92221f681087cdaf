#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace lunevra {

/// Standard base64 (RFC 4648) with padding and without line breaks.
[[nodiscard]] std::string base64Encode(std::span<const std::uint8_t> bytes);

/// Nothing for any character outside the alphabet, missing or misplaced padding.
[[nodiscard]] std::optional<std::vector<std::uint8_t>> base64Decode(std::string_view text);

}  // namespace lunevra
