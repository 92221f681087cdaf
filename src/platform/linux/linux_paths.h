#pragma once

#include <filesystem>
#include <vector>

#include "platform/linux/system_calendar.h"

namespace lunevra {

/// Where a host keeps and finds its things.
struct LinuxPaths {
  std::filesystem::path dataFolder;
  std::filesystem::path cloudFolder;
  /// The folders for the lock of the one running engine, the best first.
  std::vector<std::filesystem::path> lockFolders;
  ZoneSources zone;
  /// Asking for a bus where there is none would start one.
  bool hasSessionBus = false;

  /// By the XDG variables and their defaults; `LUNEVRA_CLOUD_FOLDER` names another cloud folder.
  /// Reads the environment once; call it before there are threads.
  [[nodiscard]] static LinuxPaths fromEnvironment();
};

}  // namespace lunevra
