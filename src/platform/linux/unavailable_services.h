#pragma once

#include "platform/helper_connection.h"
#include "platform/service_manager.h"

namespace lunevra {

// This build registers no services and reaches no helper. The parts below say so honestly to
// whoever asks.

/// No service is found, none can be registered.
class UnavailableServices : public ServiceManager {
 public:
  [[nodiscard]] Service& agent(std::string_view propertyListName) override;
  [[nodiscard]] Service& daemon(std::string_view propertyListName) override;
  [[nodiscard]] Service& mainApp() override;

 private:
  class MissingService : public Service {
   public:
    [[nodiscard]] ServiceStatus status() const override;
    void registerService() override;
    void unregisterService() override;
  };

  MissingService service_;
};

/// Connections whose far end is never there.
class UnavailableHelper : public HelperConnector {
 public:
  [[nodiscard]] std::shared_ptr<HelperConnection> connectPrivileged(
      std::string_view serviceName, std::function<void()> ended) override;
};

}  // namespace lunevra
