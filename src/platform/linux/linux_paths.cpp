#include "platform/linux/linux_paths.h"

#include <cstdlib>
#include <pwd.h>
#include <string>
#include <unistd.h>

namespace lunevra {
namespace {

std::string variable(const char* name) {
  const char* value = std::getenv(name);
  return value != nullptr ? value : "";
}

/// An XDG variable that is no absolute path is to be ignored.
std::filesystem::path folderVariable(const char* name) {
  const std::filesystem::path folder(variable(name));
  return folder.is_absolute() ? folder : std::filesystem::path();
}

std::filesystem::path homeFolder() {
  if (auto home = folderVariable("HOME"); !home.empty()) return home;
  const auto* entry = ::getpwuid(::getuid());
  return entry != nullptr && entry->pw_dir != nullptr ? entry->pw_dir : "/";
}

}  // namespace

LinuxPaths LinuxPaths::fromEnvironment() {
  LinuxPaths paths;
  auto data = folderVariable("XDG_DATA_HOME");
  if (data.empty()) data = homeFolder() / ".local" / "share";
  paths.dataFolder = data / "lunevra";
  paths.cloudFolder = folderVariable("LUNEVRA_CLOUD_FOLDER");
  if (paths.cloudFolder.empty()) paths.cloudFolder = paths.dataFolder / "cloud";
  const auto runtime = folderVariable("XDG_RUNTIME_DIR");
  std::error_code error;
  paths.hasSessionBus = !variable("DBUS_SESSION_BUS_ADDRESS").empty() ||
                        (!runtime.empty() && std::filesystem::is_socket(runtime / "bus", error));
  if (!runtime.empty()) paths.lockFolders.push_back(runtime);
  paths.lockFolders.push_back(paths.dataFolder);
  paths.zone.environment = variable("TZ");
  return paths;
}

}  // namespace lunevra
