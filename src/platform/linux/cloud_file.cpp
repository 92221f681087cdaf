#include "platform/linux/cloud_file.h"

#include "platform/foundation/stored_value_json.h"
#include "platform/linux/file_name.h"
#include "platform/linux/whole_file.h"

namespace lunevra {
namespace {

constexpr std::string_view extension = ".json";
constexpr std::string_view conflictMark = ".sync-conflict-";

}  // namespace

std::string cloudFileName(std::string_view key) {
  return escapedFileName(key).append(extension);
}

std::optional<std::string> keyOfCloudFile(std::string_view fileName) {
  if (!fileName.ends_with(extension) || fileName.find(conflictMark) != std::string_view::npos)
    return std::nullopt;
  // A name that we would not have written belongs to somebody else.
  auto key = unescapedFileName(fileName.substr(0, fileName.size() - extension.size()));
  return key && !key->empty() ? key : std::nullopt;
}

std::optional<StoredValue> readCloudFile(const std::filesystem::path& file) {
  // Nobody would tell when the file behind a symbolic link changes, so it is good that those are
  // not followed.
  const auto contents = readWholeFile(file);
  return contents ? decodeStoredValue(*contents) : std::nullopt;
}

std::optional<CloudListing> listCloudFolder(const std::filesystem::path& folder) {
  std::error_code error;
  std::filesystem::directory_iterator entries(folder, error);
  if (error) return std::nullopt;
  CloudListing listing;
  for (; entries != std::filesystem::directory_iterator(); entries.increment(error)) {
    const auto key = keyOfCloudFile(entries->path().filename().string());
    if (key) listing.emplace(*key, readCloudFile(entries->path()));
  }
  return error ? std::nullopt : std::optional(std::move(listing));
}

}  // namespace lunevra
