#pragma once

#include <memory>

#include "platform/application.h"

namespace lunevra {

/// The window that covers one display while the lock is up: borderless, black, above everything, on
/// every desktop. It can always become key, though it has no title bar. Closed with its owner.
class SleepLockWindow {
 public:
  SleepLockWindow(Application& application, const Screen& screen,
                  std::shared_ptr<WindowContent> content);
  SleepLockWindow(SleepLockWindow&&) noexcept = default;
  SleepLockWindow& operator=(SleepLockWindow&&) = delete;
  SleepLockWindow(const SleepLockWindow&) = delete;
  SleepLockWindow& operator=(const SleepLockWindow&) = delete;
  ~SleepLockWindow();

  /// Back above everything that may have risen over it.
  void raise();

  [[nodiscard]] Window& window() const { return *window_; }
  [[nodiscard]] bool is(const std::shared_ptr<Window>& other) const { return window_ == other; }

 private:
  std::shared_ptr<Window> window_;
};

}  // namespace lunevra
