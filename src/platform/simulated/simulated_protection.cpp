#include "platform/simulated/simulated_protection.h"

#include <utility>

namespace lunevra {

void SimulatedService::registerService() {
  ++registrations_;
  if (refusal_) throw LocalizedError(*refusal_);
  status_ = afterRegistration_;
}

void SimulatedService::unregisterService() {
  if (refusal_) throw LocalizedError(*refusal_);
  status_ = ServiceStatus::notRegistered;
}

class SimulatedFirewallHelper::Connection final : public HelperConnection,
                                                  public FirewallHelperProxy {
 public:
  Connection(SimulatedFirewallHelper& helper, std::function<void()> ended)
      : helper_(helper), ended_(std::move(ended)) {}

  FirewallHelperProxy* remoteObjectProxy(
      std::function<void(const std::string&)> errorHandler) override {
    errorHandler_ = std::move(errorHandler);
    return helper_.behaviour_ == Behaviour::unreachable ? nullptr : this;
  }

  void startBlock(const std::vector<std::string>& domains, Instant until, std::int64_t generation,
                  HelperReply reply) override {
    receive({FirewallRequest::Kind::start, generation, until, domains.size()}, reply);
  }

  void clearBlock(std::int64_t generation, HelperReply reply) override {
    receive({FirewallRequest::Kind::clear, generation, {}, 0}, reply);
  }

 private:
  void receive(const FirewallRequest& request, const HelperReply& reply) {
    if (helper_.behaviour_ == Behaviour::breakOff) {
      errorHandler_(helper_.text_.value_or(""));
      ended_();
      return;
    }
    helper_.requests_.push_back(request);
    helper_.onRequest_(request);
    if (helper_.behaviour_ == Behaviour::succeed) reply(true, std::nullopt);
    if (helper_.behaviour_ == Behaviour::fail) reply(false, helper_.text_);
  }

  SimulatedFirewallHelper& helper_;
  std::function<void()> ended_;
  std::function<void(const std::string&)> errorHandler_;
};

void SimulatedFirewallHelper::behave(Behaviour behaviour, std::optional<std::string> text) {
  behaviour_ = behaviour;
  text_ = std::move(text);
}

std::shared_ptr<HelperConnection> SimulatedFirewallHelper::connectPrivileged(
    std::string_view /*serviceName*/, std::function<void()> ended) {
  ++connections_;
  return std::make_shared<Connection>(*this, std::move(ended));
}

}  // namespace lunevra
