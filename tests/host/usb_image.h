#pragma once

#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <fstream>
#include <gtest/gtest.h>
#include <linux/loop.h>
#include <sys/ioctl.h>
#include <sys/mount.h>
#include <unistd.h>

#include "host/child_process.h"
#include "host/temporary_folder.h"
#include "physical_key/physical_key_manager.h"
#include "platform/foundation/digest.h"
#include "platform/linux/file_keychain.h"

namespace lunevra::host_test {

/// A small ext4 image behind a loop device, and a description of the device that makes it a USB
/// disk labelled "KEY DRIVE" to programs started with `umockdev-run -d DESCRIPTION --`.
class UsbImage {
 public:
  UsbImage() {
    const auto image = folder_.path() / "image";
    std::ofstream(image).close();
    std::filesystem::resize_file(image, 4 * 1024 * 1024);
    ChildProcess format({"mkfs.ext4", "-q", "-F", image}, {});
    if (format.exitStatus() != 0) return;
    attach(image);
    if (isAvailable()) describe();
  }
  ~UsbImage() {
    while (unmount()) continue;
    if (loop_ < 0) return;
    ioctl(loop_, LOOP_CLR_FD, 0);
    close(loop_);
  }
  UsbImage(const UsbImage&) = delete;
  UsbImage& operator=(const UsbImage&) = delete;

  /// Whether this computer lets us make such a thing.
  [[nodiscard]] bool isAvailable() const { return loop_ >= 0; }
  [[nodiscard]] std::string device() const { return "/dev/loop" + std::to_string(number_); }
  [[nodiscard]] std::filesystem::path description() const {
    return folder_.path() / "usb.umockdev";
  }
  /// Where it is mounted.
  [[nodiscard]] std::filesystem::path path() const { return folder_.path() / "drive"; }

  [[nodiscard]] bool mount(unsigned long flags = 0) const {
    std::filesystem::create_directory(path());
    return ::mount(device().c_str(), path().c_str(), "ext4", flags, nullptr) == 0;
  }
  bool unmount() const { return ::umount2(path().c_str(), MNT_DETACH) == 0; }

 private:
  void attach(const std::filesystem::path& image) {
    const int control = open("/dev/loop-control", O_RDWR | O_CLOEXEC);
    number_ = control >= 0 ? ioctl(control, LOOP_CTL_GET_FREE) : -1;
    if (control >= 0) close(control);
    if (number_ < 0) return;
    loop_ = open(device().c_str(), O_RDWR | O_CLOEXEC);
    const int file = open(image.c_str(), O_RDWR | O_CLOEXEC);
    if (loop_ >= 0 && ioctl(loop_, LOOP_SET_FD, file) != 0) {
      close(loop_);
      loop_ = -1;
    }
    close(file);
  }

  void describe() const {
    const std::string usb = "/devices/pci0000:00/0000:00:14.0/usb1/1-1";
    const auto number = std::to_string(number_);
    std::ofstream(description())
        << "P: " << usb << "\nE: DEVTYPE=usb_device\nE: SUBSYSTEM=usb\n\nP: " << usb
        << "/1-1:1.0/host6/target6:0:0/6:0:0:0/block/loop" << number << "\nA: dev=7:" << number
        << "\nE: DEVNAME=/dev/loop" << number
        << "\nE: DEVTYPE=disk\nE: ID_BUS=usb\nE: ID_FS_LABEL_ENC=KEY\\x20DRIVE\n"
        << "E: MAJOR=7\nE: MINOR=" << number << "\nE: SUBSYSTEM=block\n";
  }

  TemporaryFolder folder_;
  int number_ = -1;
  int loop_ = -1;
};

/// The drive of `runOnUsb`, to the case that runs there.
struct UsbDrive {
  std::filesystem::path path = std::getenv(pathVariable);
  std::string device = std::getenv(deviceVariable);

  void mount(unsigned long flags = 0) const {
    ASSERT_EQ(::mount(device.c_str(), path.c_str(), "ext4", flags, nullptr), 0) << errno;
  }
  void unmount() const { ::umount2(path.c_str(), MNT_DETACH); }

  /// Puts a key on the drive, which is mounted, and its fingerprint into the keychain.
  void makeKey(const std::filesystem::path& keychain) const {
    std::ofstream(path / PhysicalKeyManager::keyFileName)
        << R"({"version":1,"identifier":"","secret":"AAAA"})";
    ASSERT_EQ(FileKeychain(keychain).add(PhysicalKeyManager::keychainService,
                                         PhysicalKeyManager::keychainAccount, sha256(Bytes(3))),
              0);
  }

  static constexpr auto pathVariable = "LUNEVRA_TEST_DRIVE";
  static constexpr auto deviceVariable = "LUNEVRA_TEST_DEVICE";
};

/// Runs a disabled case of this program in a process of its own, for which an image is a drive on
/// USB. Skips the case that calls it where there are no images.
inline void runOnUsb(const std::string& name,
                     std::chrono::seconds patience = std::chrono::seconds(60)) {
  UsbImage image;
  if (!image.isAvailable() || !image.mount())
    GTEST_SKIP() << "this computer mounts no images: " << std::strerror(errno);
  image.unmount();
  ChildProcess body({"umockdev-run", "-d", image.description(), "--",
                     std::filesystem::read_symlink("/proc/self/exe"),
                     "--gtest_also_run_disabled_tests", "--gtest_filter=" + name},
                    {std::string(UsbDrive::pathVariable) + "=" + image.path().string(),
                     std::string(UsbDrive::deviceVariable) + "=" + image.device()});
  EXPECT_EQ(body.exitStatus(patience), 0) << "see above";
}

}  // namespace lunevra::host_test
