#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace lunevra {

/// The three members of a key file.
struct KeyPayloadFields {
  std::int64_t version = 0;
  std::string identifier;
  std::string secret;
};

/// One compact JSON object with the members in the order version, identifier, secret.
[[nodiscard]] std::string encodeKeyPayload(const KeyPayloadFields& fields);

/// Nothing unless the text is one JSON object that holds all three members with their types.
/// Further members are ignored; of a member given twice the last one counts. Any depth of nesting
/// is safe.
[[nodiscard]] std::optional<KeyPayloadFields> decodeKeyPayload(std::string_view text);

}  // namespace lunevra
