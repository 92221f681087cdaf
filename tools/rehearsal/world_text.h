#pragma once

#include <optional>
#include <string>

#include "platform/calendar.h"
#include "platform/stored_value.h"

namespace lunevra::rehearsal {

/// How values are written in scripts and transcripts; two values that count as equal read equally.
[[nodiscard]] std::string describe(const std::string& text);  ///< in quotes, escaped
[[nodiscard]] std::string describe(double number);
[[nodiscard]] std::string describe(std::optional<Instant> instant, const Calendar& calendar);
[[nodiscard]] std::string describe(const std::optional<StoredValue>& value,
                                   const Calendar& calendar);
/// YYYY-MM-DD HH:MM:SS.mmm
[[nodiscard]] std::string timestamp(Instant instant, const Calendar& calendar);

}  // namespace lunevra::rehearsal
