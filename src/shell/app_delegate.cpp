#include "shell/app_delegate.h"

#include <utility>

namespace lunevra {

AppDelegate::AppDelegate(const Host& host, const Desktop& desktop, LockContentFactory lockContent)
    : host_(host), desktop_(desktop), lockContent_(std::move(lockContent)), agent_(host) {}

void AppDelegate::applicationDidFinishLaunching() {
  agent_.registerAtLaunch();
  observeSystemEvents();
  installKeyboardMonitor();
}

void AppDelegate::observeSystemEvents() {
  const auto observe = [this](NotificationCenter& center, std::string_view name, auto handler) {
    systemObservers_.push_back(center.addObserver(name, [this, handler] { (this->*handler)(); }));
  };
  auto& workspace = desktop_.workspaceNotifications;
  observe(workspace, workspace_notification::didWake, &AppDelegate::handleWake);
  observe(workspace, workspace_notification::sessionDidBecomeActive,
          &AppDelegate::reassertSoonIfLocked);
  observe(workspace, workspace_notification::activeSpaceDidChange,
          &AppDelegate::reassertSoonIfLocked);
  systemObservers_.push_back(workspace.addObserver(workspace_notification::willPowerOff,
                                                   [this] { systemIsTerminating_ = true; }));
  observe(host_.notificationCenter, didChangeScreenParametersNotification,
          &AppDelegate::screenConfigurationChanged);
}

void AppDelegate::attachShutdownManager(ShutdownManager& engine) {
  auto primary = desktop_.application.keyWindow();
  if (!primary) {
    const auto windows = desktop_.application.windows();
    if (!windows.empty()) primary = windows.front();
  }
  if (primary) {
    primaryWindow_ = primary;
    if (shutdownManager_ != nullptr && isIdle()) primary->orderOut();
  }
  shutdownManager_ = &engine;
  stateObserver_ = host_.notificationCenter.addObserver(blockingStateChangedNotification,
                                                        [this] { syncWithEngineState(); });
  syncWithEngineState();
}

TerminateReply AppDelegate::applicationShouldTerminate() const {
  if (systemIsTerminating_) return TerminateReply::now;
  if (shutdownManager_ == nullptr) return TerminateReply::cancel;
  if (!isIdle() || shutdownManager_->shouldPreventQuit()) return TerminateReply::cancel;
  return TerminateReply::now;
}

bool AppDelegate::isIdle() const {
  return shutdownManager_ != nullptr && shutdownManager_->currentState() == BlockingState::idle;
}

void AppDelegate::syncWithEngineState() {
  if (isIdle())
    releaseLock();
  else
    engageLock();
}

void AppDelegate::handleWake() {
  if (shutdownManager_ == nullptr) return;
  shutdownManager_->evaluateSchedule();
  syncWithEngineState();
}

void AppDelegate::systemWillSleep() {
  handleWake();
}

void AppDelegate::reassertSoonIfLocked() {
  if (isIdle()) return;
  host_.runLoop.async(lifetime_.guard([this] { reassertLockWindows(); }));
}

void AppDelegate::screenConfigurationChanged() {
  if (shutdownManager_ == nullptr || isIdle()) return;
  rebuildLockWindows();
  reassertLockWindows();
}

void AppDelegate::installKeyboardMonitor() {
  keyboardMonitor_ = desktop_.keyEvents.addLocalMonitor(
      KeyEventKind::keyDown | KeyEventKind::keyUp | KeyEventKind::flagsChanged,
      [this](KeyEventKind) { return disposition(); });
}

KeyEventDisposition AppDelegate::disposition() const {
  return isIdle() ? KeyEventDisposition::passOn : KeyEventDisposition::discard;
}

}  // namespace lunevra
