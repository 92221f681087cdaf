#pragma once

#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <sys/types.h>

#include "platform/linux/file_identity.h"

struct udev;

namespace lunevra {

/// What the device database knows of a disk that is named by its number. Reads the kernel's and
/// udev's own records and never the disk, so it does not wait. Main thread only.
class UdevDrives {
 public:
  UdevDrives();
  ~UdevDrives();
  UdevDrives(const UdevDrives&) = delete;
  UdevDrives& operator=(const UdevDrives&) = delete;

  /// Whether the disk is built in: not on USB, FireWire or another bus that is plugged in from
  /// outside (a dock included), and no card in a slot. Of what is made of other disks (encrypted,
  /// striped, a logical volume) one that is built in decides, then one that is unknown. Images and
  /// memory disks are built in. Nothing if the database cannot tell. An answer holds as long as the
  /// kernel has that very disk; asking again then costs one lookup.
  [[nodiscard]] std::optional<bool> isInternal(dev_t disk) const;

  /// The file system's label as the person gave it.
  [[nodiscard]] std::optional<std::string> label(dev_t disk) const;

 private:
  struct Release {
    void operator()(udev* context) const;
  };
  struct Known {
    FileIdentity node;
    bool isInternal = false;
  };

  std::unique_ptr<udev, Release> context_;
  mutable std::map<dev_t, Known> known_;
};

/// Undoes the escapes (\x20) of a label in the device database. Nothing if it is empty, or holds
/// characters that would spoil a line of text.
[[nodiscard]] std::optional<std::string> decodeLabel(std::string_view encoded);

}  // namespace lunevra
