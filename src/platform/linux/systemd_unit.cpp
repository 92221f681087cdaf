#include "platform/linux/systemd_unit.h"

#include <fstream>
#include <unistd.h>

#include "platform/linux/folder_lock.h"

namespace lunevra {
namespace {

/// Long for an answer, but a login keeps the manager busy.
constexpr std::chrono::milliseconds queryLimit{800};
constexpr std::chrono::milliseconds changeLimit{2000};
/// Meanwhile the manager answers nobody.
constexpr std::chrono::seconds reloadTime{5};

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
                         const std::filesystem::path& recordFolder)
    : bus_(bus),
      unitName_(std::move(unitName)),
      kind_(kind),
      record_(recordFolder / (unitName_ + ".registered")) {}

ServiceStatus SystemdUnit::status() const {
  try {
    const bool isReloading = std::chrono::steady_clock::now() < isReloadingUntil_;
    ManagerBus::Conversation manager(bus_, isReloading ? changeLimit : queryLimit);
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

// A unit that has just been told to start has a job to do so before it is active.
bool SystemdUnit::isActive(ManagerBus::Conversation& manager) const {
  constexpr const char* interface = "org.freedesktop.systemd1.Unit";
  const auto path = load(manager);
  std::uint32_t job = 0;
  manager.property(path, interface, "Job", "(uo)", [&](sd_bus_message* answer) {
    return sd_bus_message_read(answer, "(uo)", &job, nullptr);
  });
  std::string state;
  manager.property(path, interface, "ActiveState", "s", into('s', state));
  return job != 0 || state == "active" || state == "activating" || state == "reloading";
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

void SystemdUnit::enable(ManagerBus::Conversation& manager) {
  manager.ask(
      "EnableUnitFiles",
      [this](sd_bus_message* question) {
        return sd_bus_message_append(question, "asbb", 1, unitName_.c_str(), 0, 0);
      },
      nothing);
  changeJob(manager, "StartUnit");
  reload(manager);
}

void SystemdUnit::disable(ManagerBus::Conversation& manager) {
  manager.ask(
      "DisableUnitFiles",
      [this](sd_bus_message* question) {
        return sd_bus_message_append(question, "asb", 1, unitName_.c_str(), 0);
      },
      nothing);
  if (kind_ == Kind::afterApproval) changeJob(manager, "StopUnit");
  reload(manager);
}

void SystemdUnit::changeJob(ManagerBus::Conversation& manager, const char* member) const {
  manager.ask(
      member,
      [this](sd_bus_message* question) {
        return sd_bus_message_append(question, "ss", unitName_.c_str(), "replace");
      },
      nothing);
}

// Needed only so that the manager heeds the change before the next login, and slow on a busy
// machine: it runs while the program goes on.
void SystemdUnit::reload(ManagerBus::Conversation& manager) {
  manager.tell("Reload");
  isReloadingUntil_ = std::chrono::steady_clock::now() + reloadTime;
}

void SystemdUnit::rememberRegistration() const {
  makePrivateFolder(record_.parent_path());
  if (!std::ofstream(record_, std::ios::app))
    throw LocalizedError("The registration cannot be kept in " + record_.string() + ".");
}

}  // namespace lunevra
