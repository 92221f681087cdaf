#pragma once

#include <chrono>
#include <optional>

#include "platform/desktop/desktop_host.h"
#include "platform/desktop/qt_run_loop.h"
#include "rehearsal/photographer.h"
#include "rehearsal/stage.h"

namespace lunevra::rehearsal {

/// Real windows on a real screen, and virtual time that follows the real one at its own speed.
class ScreenStage final : public Stage {
 public:
  /// Needs Qt's application object. Everything given outlives the stage.
  ScreenStage(SimulatedHost& computer, FloorWindow& floor, Photographer& photographer,
              double speed);

  [[nodiscard]] Desktop desktop() override;
  [[nodiscard]] LockContentFactory lockContent() override;
  void beginProcess() override {}
  void endProcess() override;
  void pass(SimulatedTime::Duration duration) override;
  void phaseIs(BlockingState state) override;

 private:
  using RealTime = std::chrono::steady_clock;

  /// Both what the script types and what the real keyboard does reaches the program.
  class BothKeyEvents final : public KeyEventMonitors {
   public:
    BothKeyEvents(KeyEventMonitors& first, KeyEventMonitors& second)
        : first_(first), second_(second) {}
    [[nodiscard]] Registration addLocalMonitor(
        KeyEventKind kinds, std::function<KeyEventDisposition(KeyEventKind)> decide) override;

   private:
    KeyEventMonitors& first_;
    KeyEventMonitors& second_;
  };

  [[nodiscard]] double currentSpeed() const;
  void takeDuePictures();

  SimulatedHost& computer_;
  Photographer& photographer_;
  double speed_;
  QtRunLoop viewTicks_;
  DesktopHost host_;
  BothKeyEvents keyEvents_;
  std::optional<BlockingState> phase_;
  std::optional<RealTime::time_point> pictureDue_;
  std::optional<Instant> halfWay_;
};

}  // namespace lunevra::rehearsal
