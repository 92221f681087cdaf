#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace lunevra {

/// The text as part of a file name: bytes that a sync program or a file system may object to are
/// written as %XX, and so is a dot at the start.
[[nodiscard]] std::string escapedFileName(std::string_view text);

/// The text that is escaped to exactly this name; nothing if there is none.
[[nodiscard]] std::optional<std::string> unescapedFileName(std::string_view name);

}  // namespace lunevra
