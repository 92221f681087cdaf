#pragma once

#include <functional>
#include <list>
#include <string>
#include <sys/types.h>
#include <vector>

#include "platform/helper_connection.h"
#include "platform/linux/bus_handles.h"

namespace lunevra {

/// Where a helper is looked for, and as whom it must run.
struct HelperAddress {
  std::string bus;
  std::string serviceName;
  uid_t user = 0;
};

/// One request to the helper; either `reply` or `errorHandler` is called, or neither.
struct HelperRequest {
  const char* member;
  std::function<int(sd_bus_message*)> writeArguments;  // negative: what cannot be written
  HelperReply reply;
  std::function<void(const std::string&)> errorHandler;
};

/// A connection to the helper from the first step to its end, on the thread that runs the loop.
/// Requests wait until it is known who answers under the helper's name, and go to that very
/// process: whoever takes the name later gets none of them.
class HelperSession {
 public:
  /// `ended` is called once, when the bus or the helper is lost or was never there.
  HelperSession(sd_event* loop, HelperAddress address, std::function<void()> ended);
  HelperSession(const HelperSession&) = delete;
  HelperSession& operator=(const HelperSession&) = delete;
  ~HelperSession() = default;

  void send(HelperRequest request);

 private:
  struct Call {
    HelperSession& session;
    HelperRequest request;
    BusSlot slot;
  };
  using Step = void (HelperSession::*)(sd_bus_message*);

  [[nodiscard]] int open(sd_event* loop);
  [[nodiscard]] int watch();
  template <Step next, class... Arguments>
  [[nodiscard]] int askBus(const char* member, const char* types, Arguments... arguments);
  void takeStarted(sd_bus_message* answer);
  void takeOwner(sd_bus_message* answer);
  void takeUser(sd_bus_message* answer);

  void transmit(HelperRequest request);
  [[nodiscard]] int transmit(Call& call);
  void takeReply(Call& call, sd_bus_message* answer);
  void end(const std::string& description);

  HelperAddress address_;
  std::function<void()> ended_;
  BusHandle bus_;
  EventSource patience_;
  BusSlot step_;
  BusSlot ownerWatch_;
  BusSlot disconnectWatch_;
  std::string startFailure_;
  std::string owner_;
  bool isReady_ = false;
  std::string endDescription_;  // not empty once it has ended
  std::vector<HelperRequest> waiting_;
  std::list<Call> calls_;
};

}  // namespace lunevra
