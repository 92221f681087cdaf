#pragma once

#include <cerrno>
#include <memory>
#include <string>
#include <system_error>
#include <systemd/sd-bus.h>
#include <systemd/sd-event.h>

namespace lunevra {

/// For a C library's `unref` functions, which answer a null pointer that nobody needs.
template <auto release>
struct Releaser {
  template <class Object>
  void operator()(Object* object) const {
    release(object);
  }
};

/// Closes at once: flushing would wait for a bus that may never read again.
using BusHandle = std::unique_ptr<sd_bus, Releaser<sd_bus_close_unref>>;
using BusMessage = std::unique_ptr<sd_bus_message, Releaser<sd_bus_message_unref>>;
using BusSlot = std::unique_ptr<sd_bus_slot, Releaser<sd_bus_slot_unref>>;
using EventLoop = std::unique_ptr<sd_event, Releaser<sd_event_unref>>;
using EventSource = std::unique_ptr<sd_event_source, Releaser<sd_event_source_disable_unref>>;

/// The text for one of the library's negative answers.
inline std::string busErrorText(int result) {
  return std::generic_category().message(-result);
}

/// Begins to connect and does not wait: what is sent meanwhile goes out once the bus has answered.
inline int startBus(const std::string& address, BusHandle& bus) {
  sd_bus* made = nullptr;
  int result = sd_bus_new(&made);
  if (result < 0) return result;
  bus.reset(made);
  result = sd_bus_set_address(made, address.c_str());
  if (result >= 0) result = sd_bus_set_bus_client(made, 1);
  return result >= 0 ? sd_bus_start(made) : result;
}

}  // namespace lunevra
