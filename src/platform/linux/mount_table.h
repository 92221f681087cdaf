#pragma once

#include <string>
#include <string_view>
#include <sys/types.h>
#include <vector>

#include "platform/linux/unique_descriptor.h"

namespace lunevra {

/// One mounted file system, as the kernel describes it. Nothing of it comes from the file system
/// itself, which may be slow, dead or hostile.
struct MountedVolume {
  std::string path;
  dev_t disk = 0;  // the block device it lies on; 0: none
  bool isNetwork = false;
  bool isReadOnly = false;
  int mountIdentifier = 0;

  friend bool operator==(const MountedVolume&, const MountedVolume&) = default;
};

/// The volumes that a table in the format of /proc/self/mountinfo shows to a person, in its order;
/// lines that make no sense are skipped. Left out, except for "/":
/// - file systems of the kernel and in memory (proc, sysfs, tmpfs, overlay, automount points, ...),
///   and images of installed software (squashfs);
/// - what the system mounts for itself, below /proc, /sys, /dev, /run (but for /run/media, where
///   desktops mount drives), /boot, /efi, /snap, /var/lib and /var/snap;
/// - second views of what is mounted already: parts of a file system, and all but the first mount
///   of a disk.
/// Left out in any case is what another mount covers, so that a look at a volume's path reaches it
/// and nothing else.
[[nodiscard]] std::vector<MountedVolume> parseMountTable(std::string_view table);

/// The table of this computer. Asking costs one system call as long as nothing is mounted or
/// unmounted. Main thread only.
class MountTable {
 public:
  explicit MountTable(const char* file = "/proc/self/mountinfo");

  [[nodiscard]] const std::vector<MountedVolume>& current();
  /// Reads it again even if nothing was mounted: an error may have made a volume read-only.
  [[nodiscard]] const std::vector<MountedVolume>& reread();

 private:
  [[nodiscard]] bool hasChanged() const;

  const char* file_;
  UniqueDescriptor descriptor_;
  std::vector<MountedVolume> volumes_;
  bool isRead_ = false;
};

}  // namespace lunevra
