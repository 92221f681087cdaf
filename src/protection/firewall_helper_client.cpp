#include "protection/firewall_helper_client.h"

#include <array>
#include <utility>

#include "protection/firewall_helper_constants.h"
#include "store/settings_keys.h"

namespace lunevra {
namespace {

constexpr std::array<std::string_view, 14> defaultDomains{
    "facebook.com",  "m.facebook.com", "instagram.com", "twitter.com",    "x.com",
    "tiktok.com",    "vm.tiktok.com",  "reddit.com",    "old.reddit.com", "youtube.com",
    "m.youtube.com", "netflix.com",    "snapchat.com",  "twitch.tv"};

}  // namespace

FirewallHelperClient::FirewallHelperClient(const Host& host)
    : defaults_(host.defaults),
      services_(host.services),
      connector_(host.helperConnector),
      runLoop_(host.runLoop),
      log_(host.log) {}

bool FirewallHelperClient::isArmed() const {
  return defaults_.standard().flag(settings_key::firewallEnabled).value_or(false) &&
         isDaemonEnabled();
}

void FirewallHelperClient::startBlock(Instant until, std::int64_t generation,
                                      const Completion& completion) {
  if (!isArmed()) {
    completion(false, "Firewall helper not enabled or not installed.");
    return;
  }
  send(
      [this, until, generation](FirewallHelperProxy& proxy, HelperReply reply) {
        proxy.startBlock(domains(), until, generation, std::move(reply));
      },
      completion);
}

void FirewallHelperClient::clearBlock(std::int64_t generation, const Completion& completion) {
  if (!isDaemonEnabled()) {
    completion(false, "Firewall helper not installed.");
    return;
  }
  send([generation](FirewallHelperProxy& proxy,
                    HelperReply reply) { proxy.clearBlock(generation, std::move(reply)); },
       completion);
}

void FirewallHelperClient::installHelper() {
  const auto status = daemon().status();
  if (status == ServiceStatus::enabled || status == ServiceStatus::requiresApproval) return;
  daemon().registerService();
}

void FirewallHelperClient::uninstallHelper() {
  daemon().unregisterService();
}

Service& FirewallHelperClient::daemon() const {
  return services_.daemon(firewall_helper::daemonPropertyListName);
}

bool FirewallHelperClient::isDaemonEnabled() const {
  return daemon().status() == ServiceStatus::enabled;
}

// Only an absent or unreadable setting means the built-in list; an empty list is the person's own.
std::vector<std::string> FirewallHelperClient::domains() const {
  if (auto chosen = defaults_.standard().texts(settings_key::firewallDomains)) return *chosen;
  return {defaultDomains.begin(), defaultDomains.end()};
}

void FirewallHelperClient::send(const Request& request, const Completion& completion) {
  const auto connection = openConnection();
  auto* const proxy = connection->remoteObjectProxy([&log = log_](const std::string& description) {
    log.line("Lunevra firewall client: XPC error — " + description);
  });
  if (proxy == nullptr) {
    completion(false, "Firewall helper not reachable.");
    return;
  }
  request(
      *proxy, [&runLoop = runLoop_, completion](bool success, std::optional<std::string> message) {
        runLoop.async(
            [completion, success, message = std::move(message)] { completion(success, message); });
      });
}

std::shared_ptr<HelperConnection> FirewallHelperClient::openConnection() {
  const std::scoped_lock lock(connection_->mutex);
  if (!connection_->current) {
    connection_->current = connector_.connectPrivileged(
        firewall_helper::machServiceName, [state = std::weak_ptr(connection_)] {
          const auto connection = state.lock();
          if (!connection) return;
          const std::scoped_lock guard(connection->mutex);
          connection->current.reset();
        });
  }
  return connection_->current;
}

}  // namespace lunevra
