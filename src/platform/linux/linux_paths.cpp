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
  paths.userBus = variable("DBUS_SESSION_BUS_ADDRESS");
  // The service manager of the person is on this bus, whichever one the session uses.
  if (std::error_code missing; std::filesystem::is_socket(runtime / "bus", missing))
    paths.userBus = "unix:path=" + (runtime / "bus").string();
  if (!runtime.empty()) paths.lockFolders.push_back(runtime);
  paths.lockFolders.push_back(paths.dataFolder);
  paths.zone.environment = variable("TZ");
  auto configuration = folderVariable("XDG_CONFIG_HOME");
  if (configuration.empty()) configuration = homeFolder() / ".config";
  paths.autostartFolder = configuration / "autostart";
  std::error_code error;
  paths.program = std::filesystem::read_symlink("/proc/self/exe", error);
  paths.desktops = variable("XDG_CURRENT_DESKTOP");
  paths.searchPath = variable("PATH");
  // A variable could name a bus on which anybody claims to be the helper.
  paths.systemBus = "unix:path=/run/dbus/system_bus_socket";
  return paths;
}

}  // namespace lunevra
