#include "platform/linux/systemd_unit.h"

#include <fstream>
#include <unistd.h>

#include "platform/linux/folder_lock.h"

namespace lunevra {
namespace {

constexpr std::chrono::milliseconds queryLimit{300};
/// Reading all units anew is most of it.
constexpr std::chrono::milliseconds changeLimit{2000};

int nothing(sd_bus_message*) {
  return 0;
}

/// Reads one text or object path.
ManagerBus::Reader into(char type, std::string& text) {
  return [type, &text](sd_bus_message* answer) {
    const char* value = nullptr;
    const int result = sd_bus_message_read_basic(answer, type, &value);
    if (result > 0) text = value;
    return result;
  };
}

/// The path of the program is the first text of the first command.
int readProgram(sd_bus_message* answer, std::string& program) {
  int result = sd_bus_message_enter_container(answer, 'a', "(sasbttttuii)");
  if (result > 0) result = sd_bus_message_enter_container(answer, 'r', "sasbttttuii");
  return result > 0 ? into('s', program)(answer) : result;
}

}  // namespace

SystemdUnit::SystemdUnit(ManagerBus& bus, std::string unitName, Kind kind,
                         std::filesystem::path recordFolder)
    : bus_(bus),
      unitName_(std::move(unitName)),
      kind_(kind),
      record_(std::move(recordFolder) / (unitName_ + ".registered")) {}

ServiceStatus SystemdUnit::status() const {
  try {
    ManagerBus::Conversation manager(bus_, queryLimit);
    const auto state = fileState(manager);
    if (state == "bad") return ServiceStatus::notFound;
    const bool isEnabled = state == "enabled" || state == "enabled-runtime";
    if (kind_ == Kind::alwaysRunning)
      return isEnabled && isActive(manager) ? ServiceStatus::enabled : ServiceStatus::notRegistered;
    if (!isProgramInstalled(manager)) return ServiceStatus::notFound;
    if (isEnabled) return ServiceStatus::enabled;
  } catch (const BusError&) {
    return ServiceStatus::notFound;  // a status has no other way to say that nobody knows
  }
  std::error_code error;
  return std::filesystem::exists(record_, error) ? ServiceStatus::requiresApproval
                                                 : ServiceStatus::notRegistered;
}

void SystemdUnit::registerService() {
  ManagerBus::Conversation manager(bus_, changeLimit);
  if (kind_ == Kind::afterApproval && !isProgramInstalled(manager))
    throw LocalizedError("The program of " + unitName_ + " is not installed.");
  try {
    enable(manager);
  } catch (const BusError& error) {
    if (kind_ != Kind::afterApproval || !error.isForLackOfRights()) throw;
  }
  if (kind_ == Kind::afterApproval) rememberRegistration();
}

void SystemdUnit::unregisterService() {
  ManagerBus::Conversation manager(bus_, changeLimit);
  const auto state = fileState(manager);
  if (state != "disabled") disable(manager);
  std::error_code error;
  std::filesystem::remove(record_, error);
  if (error) throw LocalizedError(record_.string() + ": " + error.message());
}

std::string SystemdUnit::fileState(ManagerBus::Conversation& manager) const {
  std::string state;
  manager.ask(
      "GetUnitFileState",
      [this](sd_bus_message* question) {
        return sd_bus_message_append_basic(question, 's', unitName_.c_str());
      },
      into('s', state));
  return state;
}

bool SystemdUnit::isActive(ManagerBus::Conversation& manager) const {
  std::string state;
  manager.property(load(manager), "org.freedesktop.systemd1.Unit", "ActiveState", "s",
                   into('s', state));
  return state == "active" || state == "activating" || state == "reloading";
}

bool SystemdUnit::isProgramInstalled(ManagerBus::Conversation& manager) const {
  std::string program;
  manager.property(load(manager), "org.freedesktop.systemd1.Service", "ExecStart", "a(sasbttttuii)",
                   [&](sd_bus_message* answer) { return readProgram(answer, program); });
  return !program.empty() && ::access(program.c_str(), X_OK) == 0;
}

std::string SystemdUnit::load(ManagerBus::Conversation& manager) const {
  std::string path;
  manager.ask(
      "LoadUnit",
      [this](sd_bus_message* question) {
        return sd_bus_message_append_basic(question, 's', unitName_.c_str());
      },
      into('o', path));
  return path;
}

void SystemdUnit::enable(ManagerBus::Conversation& manager) const {
  manager.ask(
      "EnableUnitFiles",
      [this](sd_bus_message* question) {
        return sd_bus_message_append(question, "asbb", 1, unitName_.c_str(), 0, 0);
      },
      nothing);
  manager.ask("Reload", nothing, nothing);
  manager.ask(
      "StartUnit",
      [this](sd_bus_message* question) {
        return sd_bus_message_append(question, "ss", unitName_.c_str(), "replace");
      },
      nothing);
}

void SystemdUnit::disable(ManagerBus::Conversation& manager) const {
  manager.ask(
      "DisableUnitFiles",
      [this](sd_bus_message* question) {
        return sd_bus_message_append(question, "asb", 1, unitName_.c_str(), 0);
      },
      nothing);
  manager.ask("Reload", nothing, nothing);
  if (kind_ != Kind::afterApproval) return;
  manager.ask(
      "StopUnit",
      [this](sd_bus_message* question) {
        return sd_bus_message_append(question, "ss", unitName_.c_str(), "replace");
      },
      nothing);
}

void SystemdUnit::rememberRegistration() const {
  makePrivateFolder(record_.parent_path());
  if (!std::ofstream(record_, std::ios::app))
    throw LocalizedError("The registration cannot be kept in " + record_.string() + ".");
}

}  // namespace lunevra
