#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "platform/calendar.h"

namespace lunevra {

/// The lengths of commitment on offer, in the order they are offered.
enum class LockDuration : std::uint8_t { oneDay, threeDays, oneWeek, twoWeeks, oneMonth };

inline constexpr std::array allLockDurations{LockDuration::oneDay, LockDuration::threeDays,
                                             LockDuration::oneWeek, LockDuration::twoWeeks,
                                             LockDuration::oneMonth};

/// For example "3 Days".
[[nodiscard]] std::string_view lockDurationText(LockDuration duration);

/// The same wall time so many calendar days later; `now` itself if the calendar cannot tell.
[[nodiscard]] Instant commitmentEnd(LockDuration duration, const Calendar& calendar, Instant now);

/// Days and hours from 25 hours on, then hours and minutes, then minutes; "Expired" once over;
/// empty without an end.
[[nodiscard]] std::string commitmentRemainingText(std::optional<Instant> end, Instant now);

}  // namespace lunevra
