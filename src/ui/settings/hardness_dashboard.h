#pragma once

#include "engine/shutdown_manager.h"
#include "ui/settings/hardness_row.h"

namespace lunevra {

/// The layers around the nightly lock, from the most certain to the least. Nothing is cached:
/// reading one asks the computer for the statuses of its services.
struct HardnessDashboard {
  HardnessRow sessionCover;
  HardnessRow backgroundEnforcer;
  HardnessRow firewallHelper;
  bool isFirewallEnabled = false;  ///< the switch under the firewall's row
  HardnessRow physicalKey;
  HardnessRow endpointSecurity;
  ServiceStatus agentStatus = ServiceStatus::notRegistered;

  friend bool operator==(const HardnessDashboard&, const HardnessDashboard&) = default;
};

[[nodiscard]] HardnessDashboard readHardnessDashboard(const Host& host,
                                                      const ShutdownManager& engine);

/// Keeps the firewall's switch and tells the engine's observers, whose views show it.
void setFirewallEnabled(const Host& host, ShutdownManager& engine, bool isEnabled);

/// Installs the enforcement agent; a failure goes to the engine's line of status.
void installEnforcementAgent(ShutdownManager& engine);

}  // namespace lunevra
