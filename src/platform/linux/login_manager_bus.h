#pragma once

#include <functional>
#include <string>
#include <vector>

#include "platform/linux/bus_handles.h"
#include "platform/linux/unique_descriptor.h"

namespace lunevra {

/// The conversation with the login manager over one message bus, begun anew whenever it breaks off.
/// Lives on the thread that runs the loop; the handlers are called there.
class LoginManagerBus {
 public:
  struct Handlers {
    std::function<void(bool isBeginning)> sleep;
    std::function<void()> shutdown;
    std::function<void()> sessionBecameActive;
  };

  LoginManagerBus(sd_event* loop, std::string address, Handlers handlers);
  LoginManagerBus(const LoginManagerBus&) = delete;
  LoginManagerBus& operator=(const LoginManagerBus&) = delete;
  ~LoginManagerBus() = default;

  /// Lets the computer sleep; the delay is asked for again when it has woken.
  void endSleepDelay();
  void setShutdownInhibited(bool isInhibited);

 private:
  /// A lock that the login manager has granted, for as long as the descriptor is open.
  struct Inhibitor {
    const char* what;
    const char* why;
    const char* mode;
    UniqueDescriptor descriptor;
    BusSlot request;
  };

  void open();
  [[nodiscard]] int watch();
  [[nodiscard]] int match(const std::string& rule, sd_bus_message_handler_t handler);
  void takeInhibitors();
  void take(Inhibitor& inhibitor);
  void sleepChanged(bool isBeginning);
  void openLater();

  sd_event* loop_;
  std::string address_;
  Handlers handlers_;
  BusHandle bus_;
  EventSource retry_;
  std::vector<BusSlot> watches_;
  bool isShutdownInhibited_ = false;
  Inhibitor sleepDelay_{"sleep", "The screen is covered first if it is time.", "delay", {}, {}};
  Inhibitor shutdownBlock_{"shutdown", "The computer rests until wake time.", "block", {}, {}};
};

}  // namespace lunevra
