#include "platform/linux/linux_host.h"

#include "platform/linux/folder_lock.h"

namespace lunevra {
namespace {

/// The cloud folder's default place is inside the data folder, so that one comes first.
const LinuxPaths& withDataFolder(const LinuxPaths& paths) {
  makePrivateFolder(paths.dataFolder);  // what fails here is reported by those who need it
  return paths;
}

}  // namespace

LinuxHost::LinuxHost(const LinuxPaths& paths, RunLoop& runLoop, OpenPanels& openPanels)
    : runLoop_(runLoop),
      openPanels_(openPanels),
      calendar_(withDataFolder(paths).zone, log_),
      defaults_(paths.dataFolder, log_),
      keychain_(paths.dataFolder / "keychain", !paths.userBus.empty()),
      services_(paths),
      helperConnector_(paths.systemBus),
      cloud_(paths.cloudFolder, log_) {}

Host LinuxHost::host() {
  return {.clock = clock_,
          .calendar = calendar_,
          .runLoop = runLoop_,
          .notificationCenter = notificationCenter_,
          .defaults = defaults_,
          .cloud = cloud_,
          .log = log_,
          .random = random_,
          .keychain = keychain_,
          .volumes = volumes_,
          .services = services_,
          .helperConnector = helperConnector_,
          .openPanels = openPanels_};
}

}  // namespace lunevra
