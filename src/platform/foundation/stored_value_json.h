#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "platform/stored_value.h"

namespace lunevra {

/// `{"type": …, "value": …}`, the type one of integer, flag, double, date, text, texts.
[[nodiscard]] std::string encodeStoredValue(const StoredValue& value);

/// Nothing unless the text is one such object whose value has the type it names. Never throws.
[[nodiscard]] std::optional<StoredValue> decodeStoredValue(std::string_view json);

}  // namespace lunevra
