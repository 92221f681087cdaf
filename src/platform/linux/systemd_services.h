#pragma once

#include <map>
#include <memory>
#include <string>

#include "platform/linux/linux_paths.h"
#include "platform/linux/login_item.h"
#include "platform/linux/settings_page.h"
#include "platform/linux/systemd_unit.h"

namespace lunevra {

/// Agents are units of the person's own service manager, daemons of the computer's. The property
/// list `com.lunevra.enforcer.plist` stands for the unit `com.lunevra.enforcer.service`.
class SystemdServices : public ServiceManager {
 public:
  explicit SystemdServices(const LinuxPaths& paths);

  [[nodiscard]] Service& agent(std::string_view propertyListName) override;
  [[nodiscard]] Service& daemon(std::string_view propertyListName) override;
  [[nodiscard]] Service& mainApp() override { return loginItem_; }
  [[nodiscard]] bool openLoginItems() override { return settingsPage_.open(); }

 private:
  using Units = std::map<std::string, std::unique_ptr<SystemdUnit>, std::less<>>;
  [[nodiscard]] Service& unit(Units& units, ManagerBus& bus, SystemdUnit::Kind kind,
                              std::string_view propertyListName) const;

  std::filesystem::path recordFolder_;
  ManagerBus userBus_;
  ManagerBus systemBus_;
  Units agents_;
  Units daemons_;
  LoginItem loginItem_;
  SettingsPage settingsPage_;
};

}  // namespace lunevra
