#pragma once

#include "platform/foundation/local_notification_center.h"
#include "platform/host.h"
#include "platform/linux/bus_helper_connector.h"
#include "platform/linux/cloud_folder.h"
#include "platform/linux/linux_keychain.h"
#include "platform/linux/linux_paths.h"
#include "platform/linux/linux_user_defaults_domains.h"
#include "platform/linux/linux_volumes.h"
#include "platform/linux/stderr_log.h"
#include "platform/linux/system_calendar.h"
#include "platform/linux/system_clock.h"
#include "platform/linux/system_random.h"
#include "platform/linux/systemd_services.h"

namespace lunevra {

/// A Linux computer without its screen. Made on the main thread; a bad disk never makes it fail.
class LinuxHost {
 public:
  /// The run loop and the panels, which come from the desktop, outlive the host.
  LinuxHost(const LinuxPaths& paths, RunLoop& runLoop, OpenPanels& openPanels);
  ~LinuxHost() = default;
  LinuxHost(const LinuxHost&) = delete;
  LinuxHost& operator=(const LinuxHost&) = delete;

  /// Valid as long as this object.
  [[nodiscard]] Host host();

 private:
  RunLoop& runLoop_;
  OpenPanels& openPanels_;
  StderrLog log_;
  SystemClock clock_;
  SystemCalendar calendar_;
  LocalNotificationCenter notificationCenter_;
  LinuxUserDefaultsDomains defaults_;
  SystemRandom random_;
  LinuxKeychain keychain_;
  LinuxVolumes volumes_;
  SystemdServices services_;
  // Last: their threads end before anything they may reach.
  BusHelperConnector helperConnector_;
  CloudFolder cloud_;
};

}  // namespace lunevra
