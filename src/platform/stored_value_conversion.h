#pragma once

#include <cstdint>
#include <optional>

#include "platform/stored_value.h"

namespace lunevra {

/// The value as the type asked for, or nothing if it is of another one. The one widening: an
/// integer is also a number. Numbers and dates that are not finite are nothing.
[[nodiscard]] std::optional<std::int64_t> asInteger(const std::optional<StoredValue>& value);
[[nodiscard]] std::optional<bool> asFlag(const std::optional<StoredValue>& value);
[[nodiscard]] std::optional<double> asNumber(const std::optional<StoredValue>& value);
[[nodiscard]] std::optional<Instant> asDate(const std::optional<StoredValue>& value);
[[nodiscard]] std::optional<std::vector<std::string>> asTexts(
    const std::optional<StoredValue>& value);

}  // namespace lunevra
