#pragma once

#include <QObject>
#include <QTimer>

#include "platform/foundation/timer_queue.h"
#include "platform/run_loop.h"

namespace lunevra {

/// The run loop of Qt's main thread. Made on it, after the application object; it outlives whoever
/// still calls `async`. Work that throws ends the process: half-done work must not go on unseen.
class QtRunLoop : public RunLoop {
 public:
  QtRunLoop();

  [[nodiscard]] Registration scheduleRepeating(std::chrono::milliseconds interval,
                                               std::chrono::milliseconds tolerance,
                                               std::function<void()> fire) override;
  void after(std::chrono::milliseconds delay, std::function<void()> work) override;
  void async(std::function<void()> work) override;

 private:
  [[nodiscard]] static TimerQueue::Time now();
  void fireDueTimers() noexcept;
  void armWakeUp();

  TimerQueue timers_;
  QTimer wakeUp_;
  QObject mainThread_;
};

}  // namespace lunevra
