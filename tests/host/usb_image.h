#pragma once

#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <fstream>
#include <gtest/gtest.h>
#include <linux/loop.h>
#include <sys/ioctl.h>
#include <sys/mount.h>
#include <sys/syscall.h>
#include <unistd.h>

#include "host/child_process.h"
#include "host/temporary_folder.h"
#include "physical_key/physical_key_manager.h"
#include "platform/linux/linux_host.h"
#include "platform/linux/linux_test_support.h"

namespace lunevra::host_test {

/// Mounts by the kernel, or by a program where it does not know the file system.
inline bool mountDisk(const std::string& device, const std::string& path,
                      const std::string& fileSystem, unsigned long flags) {
  if (::mount(device.c_str(), path.c_str(), fileSystem.c_str(), flags, nullptr) == 0) return true;
  if (errno != ENODEV || fileSystem != "exfat") return false;
  const auto* const options = (flags & MS_RDONLY) != 0 ? "ro" : "rw";
  return ChildProcess({"mount.exfat-fuse", "-o", options, device, path}, {}).exitStatus() == 0;
}

/// A small image behind a loop device, and a description of the device that makes it a USB disk
/// labelled "KEY DRIVE" to programs started with `umockdev-run -d DESCRIPTION --`.
class UsbImage {
 public:
  explicit UsbImage(std::string fileSystem) : fileSystem_(std::move(fileSystem)) {
    const auto image = folder_.path() / "image";
    std::ofstream(image).close();
    std::filesystem::resize_file(image, 4 * 1024 * 1024);
    ChildProcess format({"mkfs." + fileSystem_, image}, {});
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
    return mountDisk(device(), path(), fileSystem_, flags);
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

  std::string fileSystem_;
  TemporaryFolder folder_;
  int number_ = -1;
  int loop_ = -1;
};

/// The drive of `runOnUsb`, to the case that runs there.
struct UsbDrive {
  std::filesystem::path path = std::getenv(pathVariable);
  std::string device = std::getenv(deviceVariable);
  std::string fileSystem = std::getenv(fileSystemVariable);

  void mount(unsigned long flags = 0) const {
    // A program that has just been told to let go of the drive may not have done so yet.
    ASSERT_TRUE(eventually([&] { return mountDisk(device, path, fileSystem, flags); })) << errno;
  }
  void unmount() const { ::umount2(path.c_str(), MNT_DETACH); }

  /// Has the program's own parts make a key on the drive, which is mounted, as if a folder on it
  /// had been chosen.
  void makeKey(const std::filesystem::path& dataFolder) const {
    ManualRunLoop runLoop;
    NoPanels panels;
    LinuxHost computer({.dataFolder = dataFolder,
                        .cloudFolder = dataFolder / "cloud",
                        .lockFolders = {},
                        .zone = {}},
                       runLoop, panels);
    std::filesystem::create_directories(path / "some/folder");
    EXPECT_EQ(PhysicalKeyManager(computer.host()).createKey(path / "some/folder"), "KEY DRIVE");
  }

  /// From here on only the first so many bytes of the disk are there; 0: all of it is. Calls the
  /// kernel itself, because to the library's calls this is no loop device.
  void limit(std::uint64_t bytes) const {
    const auto disk = syscall(SYS_openat, AT_FDCWD, device.c_str(), O_RDWR | O_CLOEXEC);
    loop_info64 status{};
    syscall(SYS_ioctl, disk, LOOP_GET_STATUS64, &status);
    status.lo_sizelimit = bytes;
    EXPECT_EQ(syscall(SYS_ioctl, disk, LOOP_SET_STATUS64, &status), 0) << errno;
    syscall(SYS_close, disk);
  }
  /// The mounted file system answers everything with an I/O error.
  void shutDown() const {
    const auto request = _IOR('X', 125, std::uint32_t);
    const std::uint32_t withoutSaving = 2;
    const int root = open(path.c_str(), O_RDONLY | O_CLOEXEC);
    EXPECT_EQ(ioctl(root, request, &withoutSaving), 0) << errno;
    close(root);
  }

  static constexpr auto pathVariable = "LUNEVRA_TEST_DRIVE";
  static constexpr auto deviceVariable = "LUNEVRA_TEST_DEVICE";
  static constexpr auto fileSystemVariable = "LUNEVRA_TEST_FILE_SYSTEM";
};

/// Runs a disabled case of this program in a process of its own, for which an image is a drive on
/// USB. Skips the case that calls it where there are no images.
inline void runOnUsb(const std::string& name, const std::string& fileSystem = "ext4",
                     std::chrono::seconds patience = std::chrono::seconds(60)) {
  UsbImage image(fileSystem);
  if (!image.isAvailable() || !image.mount())
    GTEST_SKIP() << "this computer mounts no images: " << std::strerror(errno);
  image.unmount();
  ChildProcess body({"umockdev-run", "-d", image.description(), "--",
                     std::filesystem::read_symlink("/proc/self/exe"),
                     "--gtest_also_run_disabled_tests", "--gtest_filter=" + name},
                    {"ASAN_OPTIONS=verify_asan_link_order=0",  // umockdev's library is before its
                     std::string(UsbDrive::pathVariable) + "=" + image.path().string(),
                     std::string(UsbDrive::deviceVariable) + "=" + image.device(),
                     std::string(UsbDrive::fileSystemVariable) + "=" + fileSystem});
  EXPECT_EQ(body.exitStatus(patience), 0) << "see above";
}

}  // namespace lunevra::host_test
