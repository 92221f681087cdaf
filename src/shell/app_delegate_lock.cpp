#include <algorithm>

#include "shell/app_delegate.h"

namespace lunevra {
namespace {

using std::chrono_literals::operator""ms;

constexpr auto enforcementInterval = 750ms;
constexpr auto enforcementTolerance = 100ms;

constexpr auto lockPresentation =
    PresentationOptions::hideDock | PresentationOptions::hideMenuBar |
    PresentationOptions::disableAppleMenu | PresentationOptions::disableProcessSwitching |
    PresentationOptions::disableForceQuit | PresentationOptions::disableSessionTermination |
    PresentationOptions::disableHideApplication |
    PresentationOptions::disableCursorLocationAssistance;

}  // namespace

void AppDelegate::engageLock() {
  if (shutdownManager_ == nullptr) return;
  for (const auto& window : desktop_.application.windows()) {
    const auto isThis = [&](const SleepLockWindow& lockWindow) { return lockWindow.is(window); };
    if (std::none_of(lockWindows_.begin(), lockWindows_.end(), isThis)) window->orderOut();
  }
  if (lockWindows_.empty() || currentFrames() != screenFrames_) rebuildLockWindows();
  desktop_.application.setPresentationOptions(lockPresentation);
  startEnforcementTimer();
  reassertLockWindows();
}

void AppDelegate::releaseLock() {
  enforcementTimer_.reset();
  desktop_.application.setPresentationOptions(PresentationOptions::standard);
  lockWindows_.clear();
  screenFrames_.clear();
  if (const auto primary = primaryWindow_.lock()) primary->orderOut();
}

void AppDelegate::rebuildLockWindows() {
  lockWindows_.clear();
  screenFrames_ = currentFrames();
  for (const auto& screen : desktop_.displays.screens())
    lockWindows_.emplace_back(desktop_.application, screen, lockContent_(*shutdownManager_));
}

void AppDelegate::startEnforcementTimer() {
  if (enforcementTimer_) return;
  enforcementTimer_ = host_.runLoop.scheduleRepeating(enforcementInterval, enforcementTolerance,
                                                      [this] { reassertLockWindows(); });
}

void AppDelegate::reassertLockWindows() {
  if (isIdle()) return;
  if (shutdownManager_ != nullptr && currentFrames() != screenFrames_) rebuildLockWindows();
  for (auto& lockWindow : lockWindows_) lockWindow.raise();
  makeMainLockWindowKey();
  desktop_.application.activateIgnoringOtherApps();
}

void AppDelegate::makeMainLockWindowKey() {
  const auto main = desktop_.displays.mainScreen();
  const auto mainName = main ? std::optional(main->name) : std::nullopt;
  for (const auto& lockWindow : lockWindows_) {
    if (lockWindow.window().screenName() != mainName) continue;
    lockWindow.window().makeKeyWindow();
    return;
  }
}

std::vector<Rect> AppDelegate::currentFrames() const {
  std::vector<Rect> frames;
  for (const auto& screen : desktop_.displays.screens()) frames.push_back(screen.frame);
  return frames;
}

}  // namespace lunevra
