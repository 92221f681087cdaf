#pragma once

#include <functional>
#include <memory>

#include "shell/app_delegate.h"

namespace lunevra {

/// The program's description: one engine and one delegate, kept for the life of the process, and
/// the scenes that share the engine. The engine is made on first need.
class TorvaneApp {
 public:
  using EngineFactory = std::function<std::unique_ptr<ShutdownManager>()>;

  TorvaneApp(const Host& host, const Desktop& desktop, LockContentFactory lockContent,
             EngineFactory makeEngine);

  /// Constructs the engine, which evaluates the schedule at once, then finishes launching.
  void launch();
  /// The window group's content appeared, for the first or a further time.
  void windowGroupContentAppeared();

  ShutdownManager& shutdownManager();
  [[nodiscard]] AppDelegate& appDelegate() { return appDelegate_; }

 private:
  EngineFactory makeEngine_;
  std::unique_ptr<ShutdownManager> shutdownManager_;
  AppDelegate appDelegate_;  // after the engine that it refers to
};

}  // namespace lunevra
