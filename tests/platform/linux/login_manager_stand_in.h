#pragma once

#include <array>
#include <atomic>
#include <fcntl.h>
#include <future>
#include <map>

#include "platform/linux/event_thread.h"
#include "platform/linux/unique_descriptor.h"

namespace lunevra {

/// A login manager that grants every inhibitor, knows which are still held, and announces what it
/// is told to.
class LoginManagerStandIn {
 public:
  explicit LoginManagerStandIn(const std::string& busAddress) {
    onThread([&](sd_event* loop) {
      startBus(busAddress, bus_);
      sd_bus_attach_event(bus_.get(), loop, SD_EVENT_PRIORITY_NORMAL);
      sd_bus_add_object_vtable(bus_.get(), nullptr, path, interface, methods(), this);
      sd_bus_request_name(bus_.get(), "org.freedesktop.login1", 0);
    });
  }
  ~LoginManagerStandIn() {
    onThread([this](sd_event*) { bus_.reset(); });
  }
  LoginManagerStandIn(const LoginManagerStandIn&) = delete;
  LoginManagerStandIn& operator=(const LoginManagerStandIn&) = delete;

  void announce(const char* member, bool flag) {
    onThread([&](sd_event*) {
      sd_bus_emit_signal(bus_.get(), path, interface, member, "b", static_cast<int>(flag));
    });
  }
  void activateSession() {
    onThread([&](sd_event*) {
      sd_bus_emit_signal(bus_.get(), "/org/freedesktop/login1/session/_31",
                         "org.freedesktop.DBus.Properties", "PropertiesChanged", "sa{sv}as",
                         "org.freedesktop.login1.Session", 2, "IdleHint", "b", 0, "Active", "b", 1,
                         0);
    });
  }
  /// Whether somebody holds an inhibitor such as "sleep/delay".
  [[nodiscard]] bool isHeld(const std::string& inhibitor) {
    bool isHeld = false;
    onThread([&](sd_event*) {
      const auto found = granted_.find(inhibitor);
      char byte = 0;
      isHeld = found != granted_.end() && ::read(found->second.get(), &byte, 1) < 0;
    });
    return isHeld;
  }

 private:
  static constexpr const char* path = "/org/freedesktop/login1";
  static constexpr const char* interface = "org.freedesktop.login1.Manager";

  static const sd_bus_vtable* methods() {
    static const sd_bus_vtable vtable[] = {
        SD_BUS_VTABLE_START(0),
        SD_BUS_METHOD("Inhibit", "ssss", "h", inhibit, SD_BUS_VTABLE_UNPRIVILEGED),
        SD_BUS_VTABLE_END};
    return vtable;
  }
  static int inhibit(sd_bus_message* call, void* self, sd_bus_error*) {
    const char* what = nullptr;
    const char* mode = nullptr;
    sd_bus_message_read(call, "ssss", &what, nullptr, nullptr, &mode);
    std::array<int, 2> pipe{};
    if (::pipe2(pipe.data(), O_CLOEXEC | O_NONBLOCK) != 0) return -errno;
    const UniqueDescriptor theirs(pipe[1]);
    static_cast<LoginManagerStandIn*>(self)->granted_.insert_or_assign(
        std::string(what) + "/" + mode, UniqueDescriptor(pipe[0]));
    return sd_bus_reply_method_return(call, "h", theirs.get());
  }

  void onThread(const std::function<void(sd_event*)>& work) {
    std::promise<void> done;
    thread_.async([&](sd_event* loop) {
      work(loop);
      done.set_value();
    });
    done.get_future().wait();
  }

  std::map<std::string, UniqueDescriptor> granted_;
  BusHandle bus_;
  EventThread thread_;
};

}  // namespace lunevra
