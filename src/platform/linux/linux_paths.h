#pragma once

#include <filesystem>
#include <string>
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
  /// Addresses of message buses; empty means that there is none.
  std::string systemBus{};
  std::string userBus{};
  /// The desktop's entries for what starts at login, and the program that one of them starts.
  std::filesystem::path autostartFolder{};
  std::filesystem::path program{};
  /// As in XDG_CURRENT_DESKTOP and PATH.
  std::string desktops{};
  std::string searchPath{};

  /// By the XDG variables and their defaults; `LUNEVRA_CLOUD_FOLDER` names another cloud folder.
  /// Reads the environment once; call it before there are threads.
  [[nodiscard]] static LinuxPaths fromEnvironment();
};

}  // namespace lunevra
