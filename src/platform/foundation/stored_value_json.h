#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/stored_value.h"

namespace lunevra {

/// `{"type": …, "value": …}`, the type one of integer, flag, double, date, text, texts.
[[nodiscard]] std::string encodeStoredValue(const StoredValue& value);

/// Nothing unless the text is one such object whose value has the type it names. Never throws.
[[nodiscard]] std::optional<StoredValue> decodeStoredValue(std::string_view json);

/// A JSON array of texts. Bytes that are no UTF-8 become replacement characters.
[[nodiscard]] std::string encodeTexts(const std::vector<std::string>& texts);

/// Nothing unless the text is one JSON array of texts. Never throws.
[[nodiscard]] std::optional<std::vector<std::string>> decodeTexts(std::string_view json);

}  // namespace lunevra
