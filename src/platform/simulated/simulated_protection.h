#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "platform/helper_connection.h"
#include "platform/service_manager.h"

namespace lunevra {

/// A service whose registration succeeds with a given status or is refused with a description.
class SimulatedService final : public Service {
 public:
  explicit SimulatedService(ServiceStatus afterRegistration)
      : afterRegistration_(afterRegistration) {}

  [[nodiscard]] ServiceStatus status() const override { return status_; }
  void registerService() override;
  void unregisterService() override;

  void setStatus(ServiceStatus status) { status_ = status; }
  void refuse(std::string description) { refusal_ = std::move(description); }
  [[nodiscard]] int registrations() const { return registrations_; }

 private:
  ServiceStatus afterRegistration_;
  ServiceStatus status_ = ServiceStatus::notRegistered;
  std::optional<std::string> refusal_;
  int registrations_ = 0;
};

/// The daemon waits for an administrator's approval once registered, the others do not.
class SimulatedServices final : public ServiceManager {
 public:
  [[nodiscard]] SimulatedService& agent(std::string_view /*name*/) override { return agent_; }
  [[nodiscard]] SimulatedService& daemon(std::string_view /*name*/) override { return daemon_; }
  [[nodiscard]] SimulatedService& mainApp() override { return mainApp_; }
  [[nodiscard]] bool openLoginItems() override {
    ++settingsOpened_;
    return hasSettings_;
  }

  void removeSettings() { hasSettings_ = false; }
  [[nodiscard]] int settingsOpened() const { return settingsOpened_; }

 private:
  SimulatedService agent_{ServiceStatus::enabled};
  SimulatedService daemon_{ServiceStatus::requiresApproval};
  SimulatedService mainApp_{ServiceStatus::enabled};
  bool hasSettings_ = true;
  int settingsOpened_ = 0;
};

/// A request that reached the firewall helper.
struct FirewallRequest {
  enum class Kind { start, clear };
  Kind kind = Kind::start;
  std::int64_t generation = 0;
  Instant until;                // of a start
  std::size_t domainCount = 0;  // of a start
};

/// A firewall helper that answers as it is told to, and remembers what reached it.
class SimulatedFirewallHelper final : public HelperConnector {
 public:
  enum class Behaviour { succeed, silent, unreachable, fail, breakOff };

  explicit SimulatedFirewallHelper(std::function<void(const FirewallRequest&)> onRequest)
      : onRequest_(std::move(onRequest)) {}

  /// `text` is the message of a failure (absent: none) or the description of a broken connection.
  void behave(Behaviour behaviour, std::optional<std::string> text = std::nullopt);
  [[nodiscard]] const std::vector<FirewallRequest>& requests() const { return requests_; }
  [[nodiscard]] int connections() const { return connections_; }

  [[nodiscard]] std::shared_ptr<HelperConnection> connectPrivileged(
      std::string_view serviceName, std::function<void()> ended) override;

 private:
  class Connection;

  std::function<void(const FirewallRequest&)> onRequest_;
  Behaviour behaviour_ = Behaviour::succeed;
  std::optional<std::string> text_;
  std::vector<FirewallRequest> requests_;
  int connections_ = 0;
};

}  // namespace lunevra
