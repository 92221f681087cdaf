#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>

namespace lunevra {

inline constexpr std::int64_t hoursOnThePicker = 24;
inline constexpr std::array<std::int64_t, 4> minutesOnThePicker{0, 15, 30, 45};

/// For example "12 AM" for hour 0 and "1 PM" for hour 13.
[[nodiscard]] std::string hourLabel(std::int64_t hour);
/// For example "05".
[[nodiscard]] std::string minuteLabel(std::int64_t minute);
/// Where this minute stands on the picker; nothing for one that another program has stored.
[[nodiscard]] std::optional<int> minuteIndex(std::int64_t minute);

}  // namespace lunevra
