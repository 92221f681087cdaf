#pragma once

#include <filesystem>
#include <sched.h>
#include <sys/mount.h>

#include "platform/linux/private_bus.h"

namespace lunevra::host_test {

/// A bus where programs look for the computer's own, for this process and its children only.
class StandInSystemBus {
 public:
  StandInSystemBus() {
    std::error_code error;
    std::filesystem::create_directories(folder, error);
    isAvailable_ = ::unshare(CLONE_NEWNS) == 0 &&
                   ::mount(nullptr, "/", nullptr, MS_REC | MS_PRIVATE, nullptr) == 0 &&
                   ::mount("tmpfs", folder, "tmpfs", 0, nullptr) == 0;
    if (isAvailable_)
      std::filesystem::create_symlink(bus_.socket(),
                                      std::filesystem::path(folder) / "system_bus_socket");
  }
  ~StandInSystemBus() {
    if (isAvailable_) ::umount2(folder, MNT_DETACH);
  }
  StandInSystemBus(const StandInSystemBus&) = delete;
  StandInSystemBus& operator=(const StandInSystemBus&) = delete;

  /// Takes the rights of root.
  [[nodiscard]] bool isAvailable() const { return isAvailable_; }
  void restart() {
    bus_.kill();
    bus_.start();
  }
  [[nodiscard]] std::string address() const { return bus_.address(); }

 private:
  static constexpr const char* folder = "/run/dbus";

  PrivateBus bus_;
  bool isAvailable_ = false;
};

}  // namespace lunevra::host_test
