#include "platform/linux/mount_table.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <fcntl.h>
#include <libmount.h>
#include <map>
#include <memory>
#include <poll.h>
#include <set>
#include <string_view>
#include <sys/stat.h>
#include <sys/sysmacros.h>

namespace lunevra {
namespace {

struct Release {
  void operator()(std::FILE* file) const { std::fclose(file); }
  void operator()(libmnt_table* table) const { mnt_unref_table(table); }
  void operator()(libmnt_iter* iterator) const { mnt_free_iter(iterator); }
};
template <class T>
using Handle = std::unique_ptr<T, Release>;

constexpr std::array<std::string_view, 9> systemFolders{
    "/proc", "/sys", "/dev", "/run", "/boot", "/efi", "/snap", "/var/lib", "/var/snap"};
constexpr std::string_view desktopFolder = "/run/media";

std::string_view text(const char* value) {
  return value != nullptr ? value : "";
}

bool isBelow(std::string_view path, std::string_view folder) {
  return path.starts_with(folder) && (path.size() == folder.size() || path[folder.size()] == '/');
}

bool isOfTheSystem(std::string_view path) {
  return !isBelow(path, desktopFolder) &&
         std::any_of(systemFolders.begin(), systemFolders.end(),
                     [&](auto folder) { return isBelow(path, folder); });
}

bool isShown(libmnt_fs* mount, std::string_view path) {
  if (path == "/") return true;
  return path.starts_with('/') && mnt_fs_is_pseudofs(mount) == 0 &&
         mnt_fs_is_swaparea(mount) == 0 && text(mnt_fs_get_fstype(mount)) != "squashfs" &&
         text(mnt_fs_get_root(mount)) == "/" && !isOfTheSystem(path);
}

/// This file system's own number names no disk; the device's name does, and naming it is left to
/// the administrator.
dev_t diskOfSource(libmnt_fs* mount) {
  const auto source = text(mnt_fs_get_srcpath(mount));
  struct stat status {};
  const bool isDisk = source.starts_with("/dev/") &&
                      ::stat(std::string(source).c_str(), &status) == 0 && S_ISBLK(status.st_mode);
  return isDisk ? status.st_rdev : 0;
}

dev_t diskOf(libmnt_fs* mount) {
  const auto number = mnt_fs_get_devno(mount);
  if (major(number) != 0) return number;
  return text(mnt_fs_get_fstype(mount)) == "btrfs" ? diskOfSource(mount) : 0;
}

bool hasOption(const char* options, const char* name) {
  return options != nullptr && mnt_optstr_get_option(options, name, nullptr, nullptr) == 0;
}

MountedVolume describe(libmnt_fs* mount) {
  return {.path = mnt_fs_get_target(mount),
          .disk = diskOf(mount),
          .isNetwork = mnt_fs_is_netfs(mount) != 0,
          .isReadOnly = hasOption(mnt_fs_get_vfs_options(mount), "ro") ||
                        hasOption(mnt_fs_get_fs_options(mount), "ro"),
          .mountIdentifier = mnt_fs_get_id(mount)};
}

/// Which mounts a look at their paths would reach.
class MountTree {
 public:
  explicit MountTree(libmnt_table* table) {
    const Handle<libmnt_iter> forward(mnt_new_iter(MNT_ITER_FORWARD));
    libmnt_fs* mount = nullptr;
    while (mnt_table_next_fs(table, forward.get(), &mount) == 0) {
      mounts_.push_back(mount);
      byIdentifier_[mnt_fs_get_id(mount)] = mount;
      topmost_[text(mnt_fs_get_target(mount))] = mount;
    }
  }

  [[nodiscard]] const std::vector<libmnt_fs*>& mounts() const { return mounts_; }

  /// Not so if another mount lies on top of it, or of a folder that leads to it.
  [[nodiscard]] bool isReachable(libmnt_fs* mount) const {
    const auto path = text(mnt_fs_get_target(mount));
    if (at(topmost_, path) != mount) return false;
    auto* const outer = around(path);
    if (outer == nullptr) return true;
    auto* parent = at(byIdentifier_, mnt_fs_get_parent_id(mount));
    std::size_t steps = 0;  // a table that was made up may go in circles
    while (parent != nullptr && text(mnt_fs_get_target(parent)) == path && ++steps < mounts_.size())
      parent = at(byIdentifier_, mnt_fs_get_parent_id(parent));
    return parent == outer && isReachable(outer);
  }

 private:
  template <class Map, class Key>
  [[nodiscard]] static libmnt_fs* at(const Map& map, const Key& key) {
    const auto found = map.find(key);
    return found != map.end() ? found->second : nullptr;
  }

  /// The mount that holds the folder this path lies in.
  [[nodiscard]] libmnt_fs* around(std::string_view path) const {
    while (path.size() > 1) {
      const auto slash = path.rfind('/');
      if (slash == std::string_view::npos) return nullptr;
      path = path.substr(0, std::max<std::size_t>(slash, 1));
      if (auto* const mount = at(topmost_, path)) return mount;
    }
    return nullptr;
  }

  std::vector<libmnt_fs*> mounts_;
  std::map<int, libmnt_fs*> byIdentifier_;
  std::map<std::string_view, libmnt_fs*> topmost_;
};

std::vector<MountedVolume> volumesIn(libmnt_table* table) {
  std::vector<MountedVolume> volumes;
  std::set<dev_t> disks;
  const MountTree tree(table);
  for (auto* const mount : tree.mounts()) {
    if (!isShown(mount, text(mnt_fs_get_target(mount))) || !tree.isReachable(mount)) continue;
    auto volume = describe(mount);
    if (volume.disk != 0 && !disks.insert(volume.disk).second && volume.path != "/") continue;
    volumes.push_back(std::move(volume));
  }
  return volumes;
}

std::string readTable(const char* file) {
  const Handle<std::FILE> stream(std::fopen(file, "re"));
  std::string table;
  std::array<char, 16384> buffer;
  while (stream != nullptr) {
    const auto count = std::fread(buffer.data(), 1, buffer.size(), stream.get());
    if (count == 0) break;
    table.append(buffer.data(), count);
  }
  return table;
}

}  // namespace

std::vector<MountedVolume> parseMountTable(std::string_view table) {
  const Handle<libmnt_table> parsed(mnt_new_table());
  const Handle<std::FILE> stream(
      ::fmemopen(const_cast<char*>(table.data()), table.size(), "r"));  // for reading only
  if (parsed == nullptr || stream == nullptr) return {};
  // What follows a line that it cannot go on from is not there for us.
  static_cast<void>(mnt_table_parse_stream(parsed.get(), stream.get(), "mountinfo"));
  return volumesIn(parsed.get());
}

MountTable::MountTable(const char* file)
    : file_(file), descriptor_(::open(file, O_RDONLY | O_CLOEXEC)) {}

const std::vector<MountedVolume>& MountTable::current() {
  return isRead_ && !hasChanged() ? volumes_ : reread();
}

const std::vector<MountedVolume>& MountTable::reread() {
  // Asked first, so that what is mounted while the table is read answers the next question.
  static_cast<void>(hasChanged());
  isRead_ = static_cast<bool>(descriptor_);
  volumes_ = parseMountTable(readTable(file_));
  return volumes_;
}

bool MountTable::hasChanged() const {
  pollfd news{.fd = descriptor_.get(), .events = POLLPRI, .revents = 0};
  return ::poll(&news, 1, 0) != 0;
}

}  // namespace lunevra
