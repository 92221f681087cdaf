#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/instant.h"

namespace lunevra {

/// A helper's answer: success, and an optional message. Called at most once, on any thread.
using HelperReply = std::function<void(bool success, std::optional<std::string> message)>;

/// The firewall helper at the far end of a connection. Each call only sends; its reply comes later.
class FirewallHelperProxy {
 public:
  virtual ~FirewallHelperProxy() = default;
  virtual void startBlock(const std::vector<std::string>& domains, Instant until,
                          std::int64_t generation, HelperReply reply) = 0;
  virtual void clearBlock(std::int64_t generation, HelperReply reply) = 0;
};

/// A connection to a privileged service. Any thread, one call at a time.
class HelperConnection {
 public:
  virtual ~HelperConnection() = default;

  /// The far end, valid as long as the connection, or null if it cannot be reached. `errorHandler`
  /// gets the description when a call or its reply is lost; that call's reply never comes.
  [[nodiscard]] virtual FirewallHelperProxy* remoteObjectProxy(
      std::function<void(const std::string&)> errorHandler) = 0;
};

class HelperConnector {
 public:
  virtual ~HelperConnector() = default;

  /// Never waits for the service. `ended` runs at most once, on any thread but not within this
  /// call, when the connection is invalidated or interrupted.
  [[nodiscard]] virtual std::shared_ptr<HelperConnection> connectPrivileged(
      std::string_view serviceName, std::function<void()> ended) = 0;
};

}  // namespace lunevra
