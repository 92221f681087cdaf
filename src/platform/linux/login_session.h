#pragma once

#include <functional>
#include <memory>
#include <string>

#include "platform/lifetime.h"
#include "platform/notification_center.h"
#include "platform/run_loop.h"

namespace lunevra {

class EventThread;
class LoginManagerBus;

/// What the login manager announces about sleep, shutdown and the session, posted as the
/// workspace's notifications, and what it is asked to hold back. All waiting for the bus is done on
/// a thread of its own: one that is absent, hung or restarted costs the news and nothing else.
/// Main thread only.
class LoginSession {
 public:
  /// The computer's sleep is delayed, as far as the login manager allows, until `willSleep` has
  /// returned. Run loop and notification centre outlive the session.
  LoginSession(std::string busAddress, RunLoop& runLoop, NotificationCenter& workspace,
               std::function<void()> willSleep);
  ~LoginSession();
  LoginSession(const LoginSession&) = delete;
  LoginSession& operator=(const LoginSession&) = delete;

  /// Asks that nobody shuts the computer down meanwhile, as far as the login manager allows.
  void setTerminationInhibited(bool isInhibited);

 private:
  void sleepBegins();

  std::function<void()> willSleep_;
  /// Made, used and ended on the thread only.
  std::shared_ptr<std::unique_ptr<LoginManagerBus>> bus_;
  std::unique_ptr<EventThread> thread_;
  bool isTerminationInhibited_ = false;
  Lifetime lifetime_;
};

}  // namespace lunevra
