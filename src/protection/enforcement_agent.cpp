#include "protection/enforcement_agent.h"

#include <string>

#include "store/settings_keys.h"

namespace lunevra {

EnforcementAgent::EnforcementAgent(const Host& host)
    : services_(host.services), defaults_(host.defaults), log_(host.log) {}

void EnforcementAgent::install() {
  const auto status = agent().status();
  if (status != ServiceStatus::enabled && status != ServiceStatus::requiresApproval)
    agent().registerService();

  if (agent().status() != ServiceStatus::enabled) return;
  auto& loginItem = services_.mainApp();
  if (loginItem.status() != ServiceStatus::enabled) return;
  try {
    loginItem.unregisterService();
  } catch (const LocalizedError&) {
    // A login item that stays merely starts a second copy, which ends by itself.
  }
}

void EnforcementAgent::registerAtLaunch() {
  auto& standard = defaults_.standard();
  try {
    install();
    standard.remove(settings_key::enforcementRegistrationError);
  } catch (const LocalizedError& error) {
    const auto description = error.localizedDescription();
    log_.line("Lunevra could not register its enforcement agent: " + description);
    standard.set(settings_key::enforcementRegistrationError, description);
  }
  const auto status = static_cast<std::int64_t>(agent().status());
  standard.set(settings_key::enforcementAgentStatus, status);
  log_.line("Lunevra enforcement agent status: " + std::to_string(status));
}

Service& EnforcementAgent::agent() const {
  return services_.agent(propertyListName);
}

}  // namespace lunevra
