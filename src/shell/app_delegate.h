#pragma once

#include <functional>
#include <memory>
#include <vector>

#include "engine/shutdown_manager.h"
#include "platform/host.h"
#include "platform/lifetime.h"
#include "protection/enforcement_agent.h"
#include "shell/sleep_lock_window.h"

namespace lunevra {

/// Makes the lock screen for one lock window, showing the given engine.
using LockContentFactory = std::function<std::shared_ptr<WindowContent>(ShutdownManager&)>;

enum class TerminateReply { cancel = 0, now = 1 };

/// Raises and keeps the lock windows as the engine's phase demands, refuses to quit, and reacts to
/// what happens to the session. Until the engine is attached it fails closed: keys are discarded
/// and quitting is refused. Main thread only.
class AppDelegate {
 public:
  AppDelegate(const Host& host, const Desktop& desktop, LockContentFactory lockContent);
  ~AppDelegate() = default;
  AppDelegate(const AppDelegate&) = delete;
  AppDelegate& operator=(const AppDelegate&) = delete;

  // Messages from the platform.
  void applicationDidFinishLaunching();
  void applicationDidResignActive() { reassertSoonIfLocked(); }
  [[nodiscard]] static bool applicationShouldTerminateAfterLastWindowClosed() { return false; }
  [[nodiscard]] TerminateReply applicationShouldTerminate() const;
  /// What is due by now is on the screen when it returns.
  void systemWillSleep();

  /// Each appearance of the window group's content. The engine outlives the delegate.
  void attachShutdownManager(ShutdownManager& engine);

  [[nodiscard]] const std::vector<SleepLockWindow>& lockWindows() const { return lockWindows_; }

 private:
  void observeSystemEvents();
  void installKeyboardMonitor();
  [[nodiscard]] KeyEventDisposition disposition() const;

  void handleWake();
  void reassertSoonIfLocked();
  void screenConfigurationChanged();
  void syncWithEngineState();
  [[nodiscard]] bool isIdle() const;

  void engageLock();
  void releaseLock();
  void rebuildLockWindows();
  void startEnforcementTimer();
  void reassertLockWindows();
  void makeMainLockWindowKey();
  [[nodiscard]] std::vector<Rect> currentFrames() const;

  Host host_;
  Desktop desktop_;
  LockContentFactory lockContent_;
  EnforcementAgent agent_;

  std::weak_ptr<Window> primaryWindow_;
  ShutdownManager* shutdownManager_ = nullptr;
  Registration stateObserver_;
  Registration keyboardMonitor_;
  Registration enforcementTimer_;
  std::vector<SleepLockWindow> lockWindows_;
  std::vector<Rect> screenFrames_;
  bool systemIsTerminating_ = false;
  std::vector<Registration> systemObservers_;
  Lifetime lifetime_;
};

}  // namespace lunevra
