#pragma once

#include <memory>
#include <string>
#include <sys/types.h>

#include "platform/helper_connection.h"

namespace lunevra {

class EventThread;

/// Reaches a helper on a message bus. Everything that could wait does so on a thread of this
/// object's own, which starts with the first connection. A helper that is not running is started by
/// the bus; one that does not run as `helperUser` is not talked to.
class BusHelperConnector : public HelperConnector {
 public:
  explicit BusHelperConnector(std::string busAddress, uid_t helperUser = 0);
  ~BusHelperConnector() override;
  BusHelperConnector(const BusHelperConnector&) = delete;
  BusHelperConnector& operator=(const BusHelperConnector&) = delete;

  /// Connections end before this object does.
  [[nodiscard]] std::shared_ptr<HelperConnection> connectPrivileged(
      std::string_view serviceName, std::function<void()> ended) override;

 private:
  std::string busAddress_;
  uid_t helperUser_;
  std::unique_ptr<EventThread> thread_;
};

}  // namespace lunevra
