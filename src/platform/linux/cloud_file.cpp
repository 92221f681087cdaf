#include "platform/linux/cloud_file.h"

#include <array>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include "platform/foundation/stored_value_json.h"
#include "platform/linux/unique_descriptor.h"

namespace lunevra {
namespace {

constexpr std::string_view extension = ".json";
constexpr std::string_view conflictMark = ".sync-conflict-";
constexpr off_t largestFile = 1024 * 1024;

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

std::optional<std::string> readAll(int descriptor) {
  std::string contents;
  std::array<char, 4096> buffer;
  while (contents.size() <= static_cast<std::size_t>(largestFile)) {
    const auto count = ::read(descriptor, buffer.data(), buffer.size());
    if (count == 0) return contents;
    if (count < 0 && errno != EINTR) return std::nullopt;
    if (count > 0) contents.append(buffer.data(), static_cast<std::size_t>(count));
  }
  return std::nullopt;  // it has grown since it was measured
}

bool writeAll(int descriptor, std::string_view contents) {
  while (!contents.empty()) {
    const auto count = ::write(descriptor, contents.data(), contents.size());
    if (count < 0 && errno != EINTR) return false;
    if (count > 0) contents.remove_prefix(static_cast<std::size_t>(count));
  }
  return true;
}

std::string failure(const char* step) {
  return std::string(step) + ": " + std::strerror(errno);
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
  // A symbolic link is not followed: nobody would tell when the file behind it changes.
  const UniqueDescriptor descriptor(
      ::open(file.c_str(), O_RDONLY | O_CLOEXEC | O_NOFOLLOW | O_NONBLOCK | O_NOCTTY));
  struct stat status {};
  if (!descriptor || ::fstat(descriptor.get(), &status) != 0) return std::nullopt;
  if (!S_ISREG(status.st_mode) || status.st_size > largestFile) return std::nullopt;
  const auto contents = readAll(descriptor.get());
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

std::string writeCloudFile(const std::filesystem::path& file, const std::string& contents) {
  const auto folder = file.parent_path();
  const UniqueDescriptor directory(::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
  if (!directory) return failure("open the folder");
  auto temporary = (folder / ".lunevra-XXXXXX").string();
  {
    const UniqueDescriptor descriptor(::mkostemp(temporary.data(), O_CLOEXEC));
    if (!descriptor) return failure("make a file");
    if (!writeAll(descriptor.get(), contents) || ::fsync(descriptor.get()) != 0) {
      auto reason = failure("write");
      ::unlink(temporary.c_str());
      return reason;
    }
  }
  if (::rename(temporary.c_str(), file.c_str()) != 0) {
    auto reason = failure("rename");
    ::unlink(temporary.c_str());
    return reason;
  }
  ::fsync(directory.get());  // some sync folders refuse it; the file itself is safe by now
  return {};
}

}  // namespace lunevra
