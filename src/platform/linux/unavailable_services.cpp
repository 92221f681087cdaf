#include "platform/linux/unavailable_services.h"

namespace lunevra {
namespace {

[[noreturn]] void refuse(const char* what) {
  throw LocalizedError(std::string(what) + " not available in this build.");
}

class DeadConnection : public HelperConnection {
 public:
  [[nodiscard]] FirewallHelperProxy* remoteObjectProxy(
      std::function<void(const std::string&)> /*errorHandler*/) override {
    return nullptr;
  }
};

}  // namespace

Service& UnavailableServices::agent(std::string_view) {
  return service_;
}
Service& UnavailableServices::daemon(std::string_view) {
  return service_;
}
Service& UnavailableServices::mainApp() {
  return service_;
}

ServiceStatus UnavailableServices::MissingService::status() const {
  return ServiceStatus::notFound;
}
void UnavailableServices::MissingService::registerService() {
  refuse("Background services are");
}
void UnavailableServices::MissingService::unregisterService() {
  refuse("Background services are");
}

std::shared_ptr<HelperConnection> UnavailableHelper::connectPrivileged(std::string_view,
                                                                       std::function<void()>) {
  return std::make_shared<DeadConnection>();
}

}  // namespace lunevra
