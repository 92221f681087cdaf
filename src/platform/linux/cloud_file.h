#pragma once

#include <filesystem>
#include <map>
#include <optional>
#include <string>
#include <string_view>

#include "platform/stored_value.h"

namespace lunevra {

/// `KEY.json`, escaped where a sync program or a file system may object to a byte.
[[nodiscard]] std::string cloudFileName(std::string_view key);

/// The key whose file has exactly this name. Nothing for temporary files, conflict copies and
/// whatever else lies in the folder.
[[nodiscard]] std::optional<std::string> keyOfCloudFile(std::string_view fileName);

/// The value in a regular file of plausible size; nothing if there is none. Never blocks on what is
/// no file.
[[nodiscard]] std::optional<StoredValue> readCloudFile(const std::filesystem::path& file);

/// Every key that has a file, with its value where the file holds one. Nothing at all if the folder
/// cannot be read.
using CloudListing = std::map<std::string, std::optional<StoredValue>, std::less<>>;
[[nodiscard]] std::optional<CloudListing> listCloudFolder(const std::filesystem::path& folder);

}  // namespace lunevra
