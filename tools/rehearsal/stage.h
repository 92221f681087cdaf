#pragma once

#include "platform/simulated/simulated_host.h"
#include "shell/app_delegate.h"

namespace lunevra::rehearsal {

/// Where a night is played: in memory, or on a real screen.
class Stage {
 public:
  virtual ~Stage() = default;

  [[nodiscard]] virtual Desktop desktop() = 0;
  [[nodiscard]] virtual LockContentFactory lockContent() = 0;
  /// A process begins: its windows are those that a program has at start.
  virtual void beginProcess() = 0;
  /// ... and is gone, with its windows and whatever it held of the session.
  virtual void endProcess() = 0;
  /// Lets virtual time pass, at the stage's own speed.
  virtual void pass(SimulatedTime::Duration duration) = 0;
  /// The engine's phase, each time the night looks at it.
  virtual void phaseIs(BlockingState state) = 0;
};

/// No display and no waiting.
class MemoryStage final : public Stage {
 public:
  explicit MemoryStage(SimulatedHost& host) : host_(host) {}

  [[nodiscard]] Desktop desktop() override { return host_.desktop(); }
  [[nodiscard]] LockContentFactory lockContent() override {
    return [](ShutdownManager&) { return nullptr; };
  }
  void beginProcess() override { host_.application.beginProcess(); }
  void endProcess() override {}
  void pass(SimulatedTime::Duration duration) override { host_.time.pass(duration); }
  void phaseIs(BlockingState /*state*/) override {}

 private:
  SimulatedHost& host_;
};

}  // namespace lunevra::rehearsal
