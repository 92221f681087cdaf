#include "platform/linux/cloud_file.h"

#include "platform/foundation/stored_value_json.h"
#include "platform/linux/whole_file.h"

namespace lunevra {
namespace {

constexpr std::string_view extension = ".json";
constexpr std::string_view conflictMark = ".sync-conflict-";

bool isSafe(char character) {
  return (character >= 'a' && character <= 'z') || (character >= 'A' && character <= 'Z') ||
         (character >= '0' && character <= '9') || character == '-' || character == '_' ||
         character == '.';
}

int hexDigit(char character) {
  if (character >= '0' && character <= '9') return character - '0';
  if (character >= 'A' && character <= 'F') return character - 'A' + 10;
  return -1;
}

}  // namespace

std::string cloudFileName(std::string_view key) {
  std::string name;
  for (const char character : key) {
    if (isSafe(character) && !(character == '.' && name.empty())) {
      name += character;
    } else {
      constexpr std::string_view digits = "0123456789ABCDEF";
      const auto byte = static_cast<unsigned char>(character);
      name += {'%', digits[byte >> 4U], digits[byte & 0xFU]};
    }
  }
  return name.append(extension);
}

std::optional<std::string> keyOfCloudFile(std::string_view fileName) {
  if (!fileName.ends_with(extension) || fileName.find(conflictMark) != std::string_view::npos)
    return std::nullopt;
  const auto name = fileName.substr(0, fileName.size() - extension.size());
  std::string key;
  for (std::size_t at = 0; at < name.size(); ++at) {
    if (name[at] != '%') {
      key += name[at];
      continue;
    }
    if (at + 2 >= name.size()) return std::nullopt;
    const int high = hexDigit(name[at + 1]);
    const int low = hexDigit(name[at + 2]);
    if (high < 0 || low < 0) return std::nullopt;
    key += static_cast<char>(high * 16 + low);
    at += 2;
  }
  // A name that we would not have written belongs to somebody else.
  return !key.empty() && cloudFileName(key) == fileName ? std::optional(key) : std::nullopt;
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
