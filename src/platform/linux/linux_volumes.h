#pragma once

#include "platform/linux/bounded_work.h"
#include "platform/linux/mount_table.h"
#include "platform/linux/udev_drives.h"
#include "platform/volume_source.h"

namespace lunevra {

/// The volumes mounted for this process. Which of them there are, and what they are, is told by the
/// kernel's table and the device database alone, so that a dead network share is never touched:
/// - local: on a disk of its own, by no network file system;
/// - internal: see UdevDrives; unknown for what lies on no disk;
/// - read-only: by the options of the mount or of its file system.
/// Files are read and written on local volumes only, and only while they are mounted.
class LinuxVolumes : public VolumeSource {
 public:
  [[nodiscard]] std::vector<std::string> mountedVolumes() const override;
  [[nodiscard]] std::optional<VolumeTraits> traits(const std::string& volume) const override;
  [[nodiscard]] std::optional<bool> isReadOnly(const std::string& volume) const override;
  [[nodiscard]] std::optional<std::string> localizedName(const std::string& volume) const override;

  /// Waits a fifth of a second for a drive; one that answers later is read by a later call.
  [[nodiscard]] std::optional<std::string> readFile(const std::string& path) const override;
  /// Waits ten seconds for a drive, which may still take the file after that.
  void writeFileAtomically(const std::string& path, const std::string& contents) override;
  /// FAT and exFAT have such a flag; elsewhere a name that begins with a dot is all there is.
  void setHidden(const std::string& path) override;

 private:
  [[nodiscard]] const MountedVolume* find(const std::string& volume) const;
  /// The innermost volume that holds the path, if it may be touched.
  [[nodiscard]] const MountedVolume* touchable(const std::string& path) const;

  // What is known is brought up to date when it is asked for.
  mutable MountTable table_;
  mutable BoundedWork work_;
  UdevDrives drives_;
};

}  // namespace lunevra
