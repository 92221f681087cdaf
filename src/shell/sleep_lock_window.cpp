#include "shell/sleep_lock_window.h"

#include <utility>

namespace lunevra {

SleepLockWindow::SleepLockWindow(Application& application, const Screen& screen,
                                 std::shared_ptr<WindowContent> content)
    : window_(application.makeWindow({.contentRect = screen.frame,
                                      .styleMask = WindowStyle::borderless,
                                      .backing = BackingStore::buffered,
                                      .defer = false,
                                      .screen = screen,
                                      .canBecomeKey = true,
                                      .canBecomeMain = true})) {
  window_->setReleasedWhenClosed(false);
  window_->setLevel(WindowLevel::screenSaver);
  window_->setCollectionBehavior(CollectionBehavior::canJoinAllSpaces |
                                 CollectionBehavior::stationary | CollectionBehavior::ignoresCycle |
                                 CollectionBehavior::fullScreenAuxiliary);
  window_->setAnimationBehavior(AnimationBehavior::none);
  window_->setBackgroundColor(WindowColor::black);
  window_->setOpaque(true);
  window_->setHasShadow(false);
  window_->setMovable(false);
  window_->setIgnoresMouseEvents(false);
  window_->setContentView(std::move(content));
  window_->setFrame(screen.frame, true);
}

SleepLockWindow::~SleepLockWindow() {
  if (window_) window_->close();
}

void SleepLockWindow::raise() {
  window_->setLevel(WindowLevel::screenSaver);
  window_->orderFrontRegardless();
}

}  // namespace lunevra
