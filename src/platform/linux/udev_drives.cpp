#include "platform/linux/udev_drives.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <filesystem>
#include <libudev.h>
#include <sys/sysmacros.h>

namespace lunevra {
namespace {

struct ReleaseDevice {
  void operator()(udev_device* device) const { udev_device_unref(device); }
};
using Device = std::unique_ptr<udev_device, ReleaseDevice>;

constexpr std::array<std::string_view, 3> outsideBuses{"usb", "firewire", "pcmcia"};
constexpr int deepestStack = 8;  // disks made of disks made of disks

std::string_view text(const char* value) {
  return value != nullptr ? value : "";
}

/// One step of the way from the disk to the computer.
bool isPluggedIn(udev_device* step) {
  const auto bus = text(udev_device_get_subsystem(step));
  if (std::find(outsideBuses.begin(), outsideBuses.end(), bus) != outsideBuses.end()) return true;
  if (bus == "mmc" && text(udev_device_get_sysattr_value(step, "type")) == "SD") return true;
  // Behind a dock or an external PCI cable; a disk's own attribute of that name is a number.
  return text(udev_device_get_sysattr_value(step, "removable")) == "removable";
}

bool hangsOutside(udev_device* disk) {
  if (text(udev_device_get_property_value(disk, "ID_BUS")) == "usb") return true;
  for (auto* step = disk; step != nullptr; step = udev_device_get_parent(step))  // not owned
    if (isPluggedIn(step)) return true;
  return false;
}

std::optional<bool> isInternalDevice(udev* context, udev_device* disk, int depth);

/// Of the disks this one is made of; nothing at all if it is made of none.
std::optional<std::optional<bool>> areSlavesInternal(udev* context, udev_device* disk, int depth) {
  std::error_code error;  // no such folder: it is made of none
  std::filesystem::directory_iterator slaves(
      std::filesystem::path(text(udev_device_get_syspath(disk))) / "slaves", error);
  std::optional<std::optional<bool>> answer;
  for (; !error && slaves != std::filesystem::directory_iterator(); slaves.increment(error)) {
    const auto name = slaves->path().filename().string();
    const Device slave(udev_device_new_from_subsystem_sysname(context, "block", name.c_str()));
    const auto one = slave ? isInternalDevice(context, slave.get(), depth + 1) : std::nullopt;
    if (one == true) return std::optional(one);
    if (!answer || !one) answer = one;
  }
  return answer;
}

std::optional<bool> isInternalDevice(udev* context, udev_device* disk, int depth) {
  if (depth > deepestStack) return std::nullopt;
  if (hangsOutside(disk)) return false;
  if (const auto made = areSlavesInternal(context, disk, depth)) return *made;
  const bool isVirtual = text(udev_device_get_syspath(disk)).starts_with("/sys/devices/virtual/");
  const auto name = text(udev_device_get_sysname(disk));
  // A network's block device is virtual as well.
  if (isVirtual && !name.starts_with("loop") && !name.starts_with("ram") &&
      !name.starts_with("zram"))
    return std::nullopt;
  return true;
}

/// The kernel's entry of a disk. A disk that comes again, under whatever number, has another.
FileIdentity nodeOf(dev_t disk) {
  return identifyLink("/sys/dev/block/" + std::to_string(major(disk)) + ':' +
                      std::to_string(minor(disk)));
}

}  // namespace

void UdevDrives::Release::operator()(udev* context) const {
  udev_unref(context);
}

UdevDrives::UdevDrives() : context_(udev_new()) {}
UdevDrives::~UdevDrives() = default;

std::optional<bool> UdevDrives::isInternal(dev_t disk) const {
  const auto node = nodeOf(disk);
  const auto found = known_.find(disk);
  if (found != known_.end() && node.exists() && found->second.node == node)
    return found->second.isInternal;
  const Device device(udev_device_new_from_devnum(context_.get(), 'b', disk));
  const auto answer = device ? isInternalDevice(context_.get(), device.get(), 0) : std::nullopt;
  if (answer) known_.insert_or_assign(disk, Known{node, *answer});
  return answer;
}

std::optional<std::string> UdevDrives::label(dev_t disk) const {
  const Device device(udev_device_new_from_devnum(context_.get(), 'b', disk));
  if (!device) return std::nullopt;
  return decodeLabel(text(udev_device_get_property_value(device.get(), "ID_FS_LABEL_ENC")));
}

std::optional<std::string> decodeLabel(std::string_view encoded) {
  std::string label;
  while (!encoded.empty()) {
    unsigned char byte = 0;
    if (encoded.size() >= 4 && encoded.starts_with("\\x") &&
        std::from_chars(encoded.data() + 2, encoded.data() + 4, byte, 16).ptr ==
            encoded.data() + 4) {
      label += static_cast<char>(byte);
      encoded.remove_prefix(4);
    } else {
      label += encoded.front();
      encoded.remove_prefix(1);
    }
  }
  const bool spoilsText = std::any_of(label.begin(), label.end(), [](char character) {
    const auto byte = static_cast<unsigned char>(character);
    return byte < 0x20 || byte == 0x7F;
  });
  return label.empty() || spoilsText ? std::nullopt : std::optional(label);
}

}  // namespace lunevra
