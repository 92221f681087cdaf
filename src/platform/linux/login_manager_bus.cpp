#include "platform/linux/login_manager_bus.h"

#include <cstring>
#include <fcntl.h>
#include <utility>

namespace lunevra {
namespace {

constexpr const char* managerName = "org.freedesktop.login1";
constexpr const char* managerPath = "/org/freedesktop/login1";
constexpr const char* managerInterface = "org.freedesktop.login1.Manager";
constexpr std::uint64_t untilNextTry = 60'000'000;  // microseconds

bool readFlag(sd_bus_message* message) {
  int flag = 0;
  return sd_bus_message_read_basic(message, 'b', &flag) > 0 && flag != 0;
}

/// Whether the changed properties of a session say that it is the active one now.
bool saysActive(sd_bus_message* signal) {
  if (sd_bus_message_skip(signal, "s") < 0 ||
      sd_bus_message_enter_container(signal, 'a', "{sv}") < 0)
    return false;
  while (sd_bus_message_enter_container(signal, 'e', "sv") > 0) {
    const char* name = nullptr;
    if (sd_bus_message_read_basic(signal, 's', &name) < 0) return false;
    if (std::strcmp(name, "Active") == 0)
      return sd_bus_message_enter_container(signal, 'v', "b") > 0 && readFlag(signal);
    if (sd_bus_message_skip(signal, "v") < 0 || sd_bus_message_exit_container(signal) < 0)
      return false;
  }
  return false;
}

}  // namespace

LoginManagerBus::LoginManagerBus(sd_event* loop, std::string address, Handlers handlers)
    : loop_(loop), address_(std::move(address)), handlers_(std::move(handlers)) {
  open();
}

void LoginManagerBus::open() {
  watches_.clear();
  sleepDelay_.request.reset();
  shutdownBlock_.request.reset();
  int result = startBus(address_, bus_);
  if (result >= 0) result = sd_bus_attach_event(bus_.get(), loop_, SD_EVENT_PRIORITY_NORMAL);
  if (result >= 0) result = watch();
  if (result < 0) return openLater();
  takeInhibitors();
}

int LoginManagerBus::watch() {
  const std::string manager = "type='signal',sender='" + std::string(managerName) +
                              "',interface='" + managerInterface + "',member='";
  int result = match(manager + "PrepareForSleep'", [](sd_bus_message* signal, void* bus, auto*) {
    static_cast<LoginManagerBus*>(bus)->sleepChanged(readFlag(signal));
    return 0;
  });
  if (result >= 0)
    result = match(manager + "PrepareForShutdown'", [](sd_bus_message* signal, void* bus, auto*) {
      if (readFlag(signal)) static_cast<LoginManagerBus*>(bus)->handlers_.shutdown();
      return 0;
    });
  const std::string session = "type='signal',sender='" + std::string(managerName) +
                              "',path_namespace='/org/freedesktop/login1/session',member='";
  if (result >= 0)
    result = match(session + "Unlock'", [](sd_bus_message*, void* bus, auto*) {
      static_cast<LoginManagerBus*>(bus)->handlers_.sessionBecameActive();
      return 0;
    });
  if (result >= 0)
    result = match(session + "PropertiesChanged'", [](sd_bus_message* signal, void* bus, auto*) {
      if (saysActive(signal)) static_cast<LoginManagerBus*>(bus)->handlers_.sessionBecameActive();
      return 0;
    });
  // A login manager that has come back has forgotten what it granted.
  if (result >= 0)
    result = match("type='signal',sender='org.freedesktop.DBus',member='NameOwnerChanged',arg0='" +
                       std::string(managerName) + "'",
                   [](sd_bus_message*, void* bus, auto*) {
                     static_cast<LoginManagerBus*>(bus)->takeInhibitors();
                     return 0;
                   });
  if (result >= 0)
    result = match("type='signal',sender='org.freedesktop.DBus.Local',member='Disconnected'",
                   [](sd_bus_message*, void* bus, auto*) {
                     static_cast<LoginManagerBus*>(bus)->openLater();
                     return 0;
                   });
  return result;
}

int LoginManagerBus::match(const std::string& rule, sd_bus_message_handler_t handler) {
  sd_bus_slot* slot = nullptr;
  const int result =
      sd_bus_add_match_async(bus_.get(), &slot, rule.c_str(), handler, nullptr, this);
  watches_.emplace_back(slot);
  return result;
}

void LoginManagerBus::endSleepDelay() {
  sleepDelay_.request.reset();  // one that is granted only now would hold the sleep up
  sleepDelay_.descriptor = {};
}

void LoginManagerBus::setShutdownInhibited(bool isInhibited) {
  isShutdownInhibited_ = isInhibited;
  shutdownBlock_.request.reset();
  shutdownBlock_.descriptor = {};
  if (isInhibited) take(shutdownBlock_);
}

void LoginManagerBus::takeInhibitors() {
  take(sleepDelay_);
  if (isShutdownInhibited_) take(shutdownBlock_);
}

void LoginManagerBus::take(Inhibitor& inhibitor) {
  if (!bus_) return;
  const auto answered = [](sd_bus_message* answer, void* context, sd_bus_error*) {
    int granted = -1;
    // A refusal is the computer's policy; there is nothing to do about it.
    if (sd_bus_message_read_basic(answer, 'h', &granted) > 0)
      static_cast<Inhibitor*>(context)->descriptor =
          UniqueDescriptor(::fcntl(granted, F_DUPFD_CLOEXEC, 3));
    return 0;
  };
  sd_bus_slot* slot = nullptr;
  sd_bus_call_method_async(bus_.get(), &slot, managerName, managerPath, managerInterface, "Inhibit",
                           answered, &inhibitor, "ssss", inhibitor.what, "Lunevra", inhibitor.why,
                           inhibitor.mode);
  inhibitor.request.reset(slot);
}

void LoginManagerBus::sleepChanged(bool isBeginning) {
  if (!isBeginning) take(sleepDelay_);
  handlers_.sleep(isBeginning);
}

void LoginManagerBus::openLater() {
  const auto retry = [](sd_event_source*, std::uint64_t, void* bus) {
    static_cast<LoginManagerBus*>(bus)->open();
    return 0;
  };
  sd_event_source* timer = nullptr;
  sd_event_add_time_relative(loop_, &timer, CLOCK_MONOTONIC, untilNextTry, untilNextTry / 10, retry,
                             this);
  retry_.reset(timer);
}

}  // namespace lunevra
