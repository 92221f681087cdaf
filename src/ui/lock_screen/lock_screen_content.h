#pragma once

#include <memory>

#include "platform/desktop/quick_content.h"
#include "shell/app_delegate.h"

class QQmlEngine;
class QQuickItem;

namespace lunevra {

class LockScreenBridge;

/// The engine of the views, shared by all content and there only while some is attached.
class SharedQmlEngine {
 public:
  [[nodiscard]] std::shared_ptr<QQmlEngine> get();

 private:
  std::weak_ptr<QQmlEngine> engine_;
};

/// The lock screen in one window. Should its views fail to load, the window stays black and locked,
/// and one line in the log says why.
class LockScreenContent : public QuickContent {
 public:
  /// Everything given outlives the content.
  LockScreenContent(const Host& host, RunLoop& ticks, ShutdownManager& engine,
                    std::shared_ptr<SharedQmlEngine> views);
  ~LockScreenContent() override;
  LockScreenContent(const LockScreenContent&) = delete;
  LockScreenContent& operator=(const LockScreenContent&) = delete;

  void attach(QQuickWindow& window) override;

 private:
  void keepSizedTo(QQuickWindow& window);

  Host host_;
  RunLoop& ticks_;
  ShutdownManager& shutdownManager_;
  std::shared_ptr<SharedQmlEngine> views_;
  std::shared_ptr<QQmlEngine> engine_;
  std::unique_ptr<LockScreenBridge> bridge_;
  std::unique_ptr<QQuickItem> root_;  // first to go: it reads the bridge
};

/// Lock screens over this host; `ticks` drives what moves on them.
[[nodiscard]] LockContentFactory lockScreenFactory(const Host& host, RunLoop& ticks);

}  // namespace lunevra
