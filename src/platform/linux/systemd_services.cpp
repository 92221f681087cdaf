#include "platform/linux/systemd_services.h"

namespace lunevra {
namespace {

std::string unitName(std::string_view propertyListName) {
  constexpr std::string_view suffix = ".plist";
  if (propertyListName.ends_with(suffix)) propertyListName.remove_suffix(suffix.size());
  return std::string(propertyListName) + ".service";
}

}  // namespace

SystemdServices::SystemdServices(const LinuxPaths& paths)
    : recordFolder_(paths.dataFolder / "services"),
      userBus_(paths.userBus),
      systemBus_(paths.systemBus),
      loginItem_(paths.autostartFolder, paths.program),
      settingsPage_(paths.desktops, paths.searchPath) {}

Service& SystemdServices::agent(std::string_view propertyListName) {
  return unit(agents_, userBus_, SystemdUnit::Kind::alwaysRunning, propertyListName);
}

Service& SystemdServices::daemon(std::string_view propertyListName) {
  return unit(daemons_, systemBus_, SystemdUnit::Kind::afterApproval, propertyListName);
}

Service& SystemdServices::unit(Units& units, ManagerBus& bus, SystemdUnit::Kind kind,
                               std::string_view propertyListName) const {
  const auto known = units.find(propertyListName);
  if (known != units.end()) return *known->second;
  auto made = std::make_unique<SystemdUnit>(bus, unitName(propertyListName), kind, recordFolder_);
  return *units.emplace(propertyListName, std::move(made)).first->second;
}

}  // namespace lunevra
