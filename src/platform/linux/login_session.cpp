#include "platform/linux/login_session.h"

#include <utility>

#include "platform/linux/event_thread.h"
#include "platform/linux/login_manager_bus.h"
#include "platform/localized_error.h"
#include "platform/workspace.h"

namespace lunevra {

LoginSession::LoginSession(std::string busAddress, RunLoop& runLoop, NotificationCenter& workspace,
                           std::function<void()> willSleep)
    : willSleep_(std::move(willSleep)), bus_(std::make_shared<std::unique_ptr<LoginManagerBus>>()) {
  const auto onMain = [&runLoop](auto work) {
    return [&runLoop, work = std::function<void()>(std::move(work))] { runLoop.async(work); };
  };
  const auto posting = [&](std::string_view name) {
    return onMain(lifetime_.guard([&workspace, name] { workspace.post(name); }));
  };
  const auto begins = onMain(lifetime_.guard([this] { sleepBegins(); }));
  const auto wakes = posting(workspace_notification::didWake);
  LoginManagerBus::Handlers handlers{
      .sleep = [begins, wakes](bool isBeginning) { isBeginning ? begins() : wakes(); },
      .shutdown = posting(workspace_notification::willPowerOff),
      .sessionBecameActive = posting(workspace_notification::sessionDidBecomeActive)};
  try {
    thread_ = std::make_unique<EventThread>();
  } catch (const LocalizedError&) {
    return;  // without a descriptor to spare the lock does without the news
  }
  thread_->async([bus = bus_, address = std::move(busAddress),
                  handlers = std::move(handlers)](sd_event* loop) {
    *bus = std::make_unique<LoginManagerBus>(loop, address, handlers);
  });
}

LoginSession::~LoginSession() {
  thread_.reset();
  bus_->reset();  // nobody else runs what it is attached to any more
}

void LoginSession::sleepBegins() {
  willSleep_();
  thread_->async([bus = bus_](sd_event*) { (*bus)->endSleepDelay(); });
}

void LoginSession::setTerminationInhibited(bool isInhibited) {
  if (!thread_ || std::exchange(isTerminationInhibited_, isInhibited) == isInhibited) return;
  thread_->async(
      [bus = bus_, isInhibited](sd_event*) { (*bus)->setShutdownInhibited(isInhibited); });
}

}  // namespace lunevra
