#pragma once

#include <functional>

#include "platform/lifetime.h"
#include "platform/log.h"
#include "platform/run_loop.h"
#include "platform/x11/floor_window.h"

namespace lunevra {

/// Keeps the floor black, on top and in possession of the input for as long as it is up, against
/// whatever other programs do. Main thread only.
class FloorGuard {
 public:
  /// Floor, run loop and log outlive it.
  FloorGuard(FloorWindow& floor, RunLoop& runLoop, Log& log);

  /// Up: black on top of everything when the call returns. A grab that another program holds is
  /// tried again every few hundredths of a second until it holds.
  void setUp(bool isUp);
  [[nodiscard]] bool isUp() const { return floor_.isShown(); }
  /// Makes sure of the grabs once more; does nothing while the floor is down.
  void holdInput();
  /// To be called whenever the floor's descriptor is readable.
  void readNews();

  [[nodiscard]] FloorWindow& floor() const { return floor_; }

  /// Only while the floor is up.
  std::function<void()> onDesktopSwitched;
  std::function<void()> onConnectionLost;

 private:
  void restore();

  FloorWindow& floor_;
  RunLoop& runLoop_;
  Log& log_;
  Registration grabRetry_;
  Lifetime lifetime_;
};

}  // namespace lunevra
