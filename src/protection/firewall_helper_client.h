#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/host.h"

namespace lunevra {

/// The one point of contact with the privileged firewall helper.
///
/// Calls are made on the main thread and return once the request has been handed to the connection;
/// they never wait for the helper. A helper's reply reaches the completion in a later turn of the
/// main loop; a refusal reaches it before the call returns; a broken connection is logged and the
/// completion never runs.
class FirewallHelperClient {
 public:
  using Completion = std::function<void(bool success, const std::optional<std::string>& message)>;

  explicit FirewallHelperClient(const Host& host);

  /// The firewall switch is on and the helper's daemon is enabled.
  [[nodiscard]] bool isArmed() const;

  void startBlock(Instant until, std::int64_t generation, const Completion& completion);
  /// Needs the daemon only: a block is lifted even if the switch has been turned off since.
  void clearBlock(std::int64_t generation, const Completion& completion);

  /// Both throw LocalizedError. Installing does nothing while the daemon is enabled or waits for
  /// approval.
  void installHelper();
  void uninstallHelper();

 private:
  using Request = std::function<void(FirewallHelperProxy&, HelperReply)>;

  [[nodiscard]] Service& daemon() const;
  [[nodiscard]] bool isDaemonEnabled() const;
  [[nodiscard]] std::vector<std::string> domains() const;
  void send(const Request& request, const Completion& completion);
  [[nodiscard]] std::shared_ptr<HelperConnection> openConnection();

  /// Shared with the connection's handlers, which may outlive the client and run on any thread. The
  /// mutex is all the queue there is: requests come from the main thread only, one after another.
  struct Connection {
    std::mutex mutex;
    std::shared_ptr<HelperConnection> current;
  };

  UserDefaultsDomains& defaults_;
  ServiceManager& services_;
  HelperConnector& connector_;
  RunLoop& runLoop_;
  Log& log_;
  std::shared_ptr<Connection> connection_ = std::make_shared<Connection>();
};

}  // namespace lunevra
