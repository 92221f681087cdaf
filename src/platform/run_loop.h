#pragma once

#include <chrono>
#include <functional>

#include "platform/registration.h"

namespace lunevra {

/// The main thread's run loop. Timers measure elapsed time (a set clock does not move them, time
/// asleep does not count) and keep firing while menus and panels are open.
class RunLoop {
 public:
  virtual ~RunLoop() = default;

  /// Fires every `interval`, each time up to `tolerance` late so that wake-ups can be shared;
  /// firing times stay on the grid of the start, missed ones are skipped. Main thread only.
  [[nodiscard]] virtual Registration scheduleRepeating(std::chrono::milliseconds interval,
                                                       std::chrono::milliseconds tolerance,
                                                       std::function<void()> fire) = 0;

  /// Runs `work` once, `delay` from now. Main thread only.
  virtual void after(std::chrono::milliseconds delay, std::function<void()> work) = 0;

  /// Puts `work` on the main queue, to run on the main thread in a later turn. Any thread.
  virtual void async(std::function<void()> work) = 0;
};

}  // namespace lunevra
