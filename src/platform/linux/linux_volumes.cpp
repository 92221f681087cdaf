#include "platform/linux/linux_volumes.h"

#include <algorithm>
#include <fcntl.h>
#include <filesystem>
#include <linux/msdos_fs.h>
#include <sys/ioctl.h>
#include <sys/stat.h>

#include "platform/linux/whole_file.h"

namespace lunevra {
namespace {

using std::chrono_literals::operator""ms;
using std::chrono_literals::operator""s;

constexpr auto readPatience = 200ms;
constexpr auto writePatience = 10s;

bool isLocal(const MountedVolume& volume) {
  return volume.disk != 0 && !volume.isNetwork;
}

/// What work is about: one mount. A drive that hangs says nothing of the next one in its place.
std::string subjectOf(const MountedVolume& volume) {
  return std::to_string(volume.mountIdentifier) + volume.path;
}

/// The folder that a file is in, if it is on that mount and not on what was mounted or uncovered in
/// its place meanwhile. As long as it is held the volume stays.
UniqueDescriptor folderOf(const std::filesystem::path& file, int mountIdentifier) {
  UniqueDescriptor folder(
      ::open(file.parent_path().c_str(), O_PATH | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC));
  struct statx status {};
  const bool isThere = folder &&
                       ::statx(folder.get(), "", AT_EMPTY_PATH, STATX_MNT_ID, &status) == 0 &&
                       status.stx_mnt_id == static_cast<std::uint64_t>(mountIdentifier);
  return isThere ? std::move(folder) : UniqueDescriptor();
}

std::optional<std::string> readOn(int mountIdentifier, const std::filesystem::path& file) {
  const auto folder = folderOf(file, mountIdentifier);
  if (!folder) return std::nullopt;
  const UniqueDescriptor descriptor(
      ::openat(folder.get(), file.filename().c_str(),
               O_RDONLY | O_CLOEXEC | O_NOFOLLOW | O_NONBLOCK | O_NOCTTY));
  return descriptor ? readWholeFile(descriptor.get()) : std::nullopt;
}

std::string replaceOn(int mountIdentifier, const std::filesystem::path& file,
                      const std::string& contents) {
  const auto folder = folderOf(file, mountIdentifier);
  return folder ? replaceFile(file, contents) : "The drive is gone.";
}

bool hide(const std::filesystem::path& file) {
  const UniqueDescriptor descriptor(::open(file.c_str(), O_RDONLY | O_CLOEXEC | O_NOFOLLOW));
  std::uint32_t attributes = 0;
  if (!descriptor || ::ioctl(descriptor.get(), FAT_IOCTL_GET_ATTRIBUTES, &attributes) != 0)
    return false;
  attributes |= ATTR_HIDDEN;
  return ::ioctl(descriptor.get(), FAT_IOCTL_SET_ATTRIBUTES, &attributes) == 0;
}

}  // namespace

std::vector<std::string> LinuxVolumes::mountedVolumes() const {
  std::vector<std::string> paths;
  for (const auto& volume : table_.current()) paths.push_back(volume.path);
  return paths;
}

std::optional<VolumeTraits> LinuxVolumes::traits(const std::string& volume) const {
  const auto* const found = find(volume);
  if (found == nullptr) return std::nullopt;
  return VolumeTraits{
      .isInternal = found->disk != 0 ? drives_.isInternal(found->disk) : std::nullopt,
      .isLocal = isLocal(*found),
      .isRootFileSystem = found->path == "/"};
}

std::optional<bool> LinuxVolumes::isReadOnly(const std::string& volume) const {
  static_cast<void>(table_.reread());
  const auto* const found = find(volume);
  if (found == nullptr) throw LocalizedError("The drive is gone.");
  return found->isReadOnly;
}

std::optional<std::string> LinuxVolumes::localizedName(const std::string& volume) const {
  const auto* const found = find(volume);
  return found != nullptr && found->disk != 0 ? drives_.label(found->disk) : std::nullopt;
}

std::optional<std::string> LinuxVolumes::readFile(const std::string& path) const {
  const auto* const volume = touchable(path);
  if (volume == nullptr) return std::nullopt;
  return work_
      .run<std::optional<std::string>>(
          subjectOf(*volume), readPatience,
          [mount = volume->mountIdentifier, path] { return readOn(mount, path); })
      .value_or(std::nullopt);
}

void LinuxVolumes::writeFileAtomically(const std::string& path, const std::string& contents) {
  const auto* const volume = touchable(path);
  if (volume == nullptr) throw LocalizedError("The drive is gone.");
  const auto failure = work_.run<std::string>(subjectOf(*volume), writePatience,
                                              [mount = volume->mountIdentifier, path, contents] {
                                                return replaceOn(mount, path, contents);
                                              });
  if (!failure) throw LocalizedError("The drive does not answer.");
  if (!failure->empty()) throw LocalizedError(*failure);
}

void LinuxVolumes::setHidden(const std::string& path) {
  const auto* const volume = touchable(path);
  if (volume == nullptr) return;
  // A file that stays visible is as good a key.
  static_cast<void>(
      work_.run<bool>(subjectOf(*volume), readPatience, [path] { return hide(path); }));
}

const MountedVolume* LinuxVolumes::find(const std::string& volume) const {
  const auto& volumes = table_.current();
  const auto found = std::find_if(volumes.begin(), volumes.end(),
                                  [&](const auto& other) { return other.path == volume; });
  return found != volumes.end() ? &*found : nullptr;
}

const MountedVolume* LinuxVolumes::touchable(const std::string& path) const {
  auto folder = std::filesystem::path(path).parent_path();
  auto* volume = find(folder.string());
  while (volume == nullptr && folder.has_relative_path()) {
    folder = folder.parent_path();
    volume = find(folder.string());
  }
  return volume != nullptr && isLocal(*volume) ? volume : nullptr;
}

}  // namespace lunevra
