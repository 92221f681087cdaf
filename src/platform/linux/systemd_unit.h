#pragma once

#include <filesystem>
#include <string>

#include "platform/linux/manager_bus.h"
#include "platform/service_manager.h"

namespace lunevra {

/// A program that systemd starts, as a unit that is enabled or not. Its states:
///   notFound          there is no such unit or it cannot be read, its program is not installed, or
///                     no service manager answers
///   requiresApproval  registered by the program, but not enabled: an administrator has to enable
///                     the unit (`AfterApproval` only)
///   enabled           the unit is enabled; one that is to be `alwaysRunning` is active as well
///   notRegistered     everything else
/// Registering enables the unit and starts it, all without asking anybody for a password.
class SystemdUnit : public Service {
 public:
  enum class Kind {
    alwaysRunning,  // of the person: registering means that it runs from now on
    afterApproval,  // of the computer: only an administrator may enable it
  };

  /// A registration that waits for approval is remembered by a file in `recordFolder`. The bus
  /// outlives the unit.
  SystemdUnit(ManagerBus& bus, std::string unitName, Kind kind,
              const std::filesystem::path& recordFolder);

  [[nodiscard]] ServiceStatus status() const override;
  void registerService() override;
  /// A unit of the person that runs goes on until the end of the login: it may be who is asking.
  void unregisterService() override;

 private:
  [[nodiscard]] std::string fileState(ManagerBus::Conversation& manager) const;
  [[nodiscard]] bool isActive(ManagerBus::Conversation& manager) const;
  [[nodiscard]] bool isProgramInstalled(ManagerBus::Conversation& manager) const;
  [[nodiscard]] std::string load(ManagerBus::Conversation& manager) const;
  void enable(ManagerBus::Conversation& manager);
  void disable(ManagerBus::Conversation& manager);
  void changeJob(ManagerBus::Conversation& manager, const char* member) const;
  void reload(ManagerBus::Conversation& manager);
  void rememberRegistration() const;

  ManagerBus& bus_;
  std::string unitName_;
  Kind kind_;
  std::filesystem::path record_;
  std::chrono::steady_clock::time_point isReloadingUntil_{};
};

}  // namespace lunevra
