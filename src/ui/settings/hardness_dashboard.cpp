#include "ui/settings/hardness_dashboard.h"

#include "protection/endpoint_security_stub.h"
#include "protection/firewall_helper_constants.h"
#include "store/settings_keys.h"

namespace lunevra {
namespace {

HardnessRow sessionCoverRow() {
  return {"Session cover", HardnessStatus::green,
          "Every display, every Space; force-quit and process-switching suppressed."};
}

HardnessRow agentRow(ServiceStatus status) {
  HardnessRow row{.title = "Background enforcer (LaunchAgent)"};
  if (status == ServiceStatus::enabled) {
    row.status = HardnessStatus::green;
    row.detail = "Registered — relaunches Lunevra if it's killed.";
  } else if (status == ServiceStatus::requiresApproval) {
    row.status = HardnessStatus::yellow;
    row.detail = "Approve in System Settings → General → Login Items.";
    row.action = HardnessAction::openLoginItems;
  } else {
    row.detail = "Not installed — the app can be killed to bypass tonight.";
    row.action = HardnessAction::installAgent;
  }
  return row;
}

HardnessRow firewallRow(bool isActive, bool isSwitchedOn, ServiceStatus daemon) {
  HardnessRow row{.title = "Firewall helper (LaunchDaemon)"};
  if (isActive) {
    row.status = HardnessStatus::green;
    row.detail = "Root pf firewall drops network traffic to your blocklist during bedtime.";
    row.action = HardnessAction::uninstallHelper;
    return row;
  }
  const bool waits = daemon == ServiceStatus::requiresApproval;
  row.status = waits || isSwitchedOn ? HardnessStatus::yellow : HardnessStatus::red;
  row.detail = waits ? "Approve the admin prompt to activate root-level network blocking."
                     : "Optional. Install to add pf firewall drops for distraction domains during "
                       "bedtime.";
  row.action = HardnessAction::installHelper;
  return row;
}

HardnessRow keyRow(bool isConfigured, bool isMounted) {
  HardnessRow row{.title = "Physical USB key"};
  if (!isConfigured) {
    row.detail = "No key — the lock will still run, but there's no early-release path.";
  } else if (isMounted) {
    row.status = HardnessStatus::yellow;
    row.detail = "Key is currently mounted — hand it to your trusted person and eject.";
  } else {
    row.status = HardnessStatus::green;
    row.detail = "Configured; only the exact drive can release a night early.";
  }
  return row;
}

HardnessRow endpointSecurityRow() {
  return {"Endpoint Security (uninstall protection)", HardnessStatus::red,
          std::string(endpoint_security_stub::statusText)};
}

}  // namespace

std::string hardnessActionLabel(HardnessAction action) {
  switch (action) {
    case HardnessAction::none:
      return {};
    case HardnessAction::openLoginItems:
      return "Open Settings";
    case HardnessAction::installAgent:
    case HardnessAction::installHelper:
      return "Install";
    case HardnessAction::uninstallHelper:
      return "Uninstall";
  }
  return {};
}

HardnessDashboard readHardnessDashboard(const Host& host, const ShutdownManager& engine) {
  HardnessDashboard dashboard;
  dashboard.agentStatus = host.services.agent(EnforcementAgent::propertyListName).status();
  dashboard.isFirewallEnabled =
      host.defaults.standard().flag(settings_key::firewallEnabled).value_or(false);
  dashboard.sessionCover = sessionCoverRow();
  dashboard.backgroundEnforcer = agentRow(dashboard.agentStatus);
  dashboard.firewallHelper =
      firewallRow(engine.isFirewallProtectionActive(), dashboard.isFirewallEnabled,
                  host.services.daemon(firewall_helper::daemonPropertyListName).status());
  dashboard.physicalKey = keyRow(engine.isPhysicalKeyConfigured(), engine.isPhysicalKeyMounted());
  dashboard.endpointSecurity = endpointSecurityRow();
  return dashboard;
}

void setFirewallEnabled(const Host& host, ShutdownManager& engine, bool isEnabled) {
  engine.announceChange();
  host.defaults.standard().set(settings_key::firewallEnabled, isEnabled);
}

void installEnforcementAgent(ShutdownManager& engine) {
  try {
    engine.installEnforcementAgent();
    engine.announceChange();  // the agent's status is no property, but views read it
  } catch (const LocalizedError& error) {
    engine.setPhysicalKeyMessage("Could not update background enforcement: " +
                                 error.localizedDescription());
  }
}

}  // namespace lunevra
