#include "platform/linux/whole_file.h"

#include <array>
#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include "platform/linux/unique_descriptor.h"

namespace lunevra {
namespace {

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

std::optional<std::string> readWholeFile(const std::filesystem::path& path, std::size_t largest) {
  const UniqueDescriptor descriptor(
      ::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NOFOLLOW | O_NONBLOCK | O_NOCTTY));
  return descriptor ? readWholeFile(descriptor.get(), largest) : std::nullopt;
}

std::optional<std::string> readWholeFile(int descriptor, std::size_t largest) {
  struct stat status {};
  if (::fstat(descriptor, &status) != 0 || !S_ISREG(status.st_mode)) return std::nullopt;
  if (static_cast<std::size_t>(status.st_size) > largest) return std::nullopt;
  std::string contents;
  std::array<char, 4096> buffer;
  while (contents.size() <= largest) {
    const auto count = ::read(descriptor, buffer.data(), buffer.size());
    if (count == 0) return contents;
    if (count < 0 && errno != EINTR) return std::nullopt;
    if (count > 0) contents.append(buffer.data(), static_cast<std::size_t>(count));
  }
  return std::nullopt;  // it has grown since it was measured
}

std::string replaceFile(const std::filesystem::path& file, std::string_view contents) {
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
  // Some file systems refuse to sync a folder; a disk that fails to is another matter.
  if (::fsync(directory.get()) != 0 && errno == EIO) return failure("sync the folder");
  return {};
}

}  // namespace lunevra
