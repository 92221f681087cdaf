#include "platform/desktop/qt_run_loop.h"

#include <algorithm>
#include <utility>

namespace lunevra {

using std::chrono::milliseconds;

QtRunLoop::QtRunLoop() {
  wakeUp_.setSingleShot(true);
  wakeUp_.setTimerType(Qt::PreciseTimer);  // tolerances are shared out by the queue, not by Qt
  QObject::connect(&wakeUp_, &QTimer::timeout, &mainThread_, [this] { fireDueTimers(); });
}

Registration QtRunLoop::scheduleRepeating(milliseconds interval, milliseconds tolerance,
                                          std::function<void()> fire) {
  auto timer = timers_.addRepeating(now(), interval, tolerance, std::move(fire));
  armWakeUp();
  return timer;
}

void QtRunLoop::after(milliseconds delay, std::function<void()> work) {
  timers_.addOnce(now() + delay, std::move(work));
  armWakeUp();
}

void QtRunLoop::async(std::function<void()> work) {
  QMetaObject::invokeMethod(
      &mainThread_, [work = std::move(work)]() noexcept { work(); }, Qt::QueuedConnection);
}

TimerQueue::Time QtRunLoop::now() {
  return std::chrono::steady_clock::now().time_since_epoch();
}

void QtRunLoop::fireDueTimers() noexcept {
  const auto moment = now();
  while (timers_.nextDue() && *timers_.nextDue() <= moment) {
    armWakeUp();  // the timer about to fire may open a loop of its own
    timers_.fireNextDue(moment);
  }
  armWakeUp();
}

void QtRunLoop::armWakeUp() {
  const auto latest = timers_.latestWakeUp();
  if (!latest) return wakeUp_.stop();
  constexpr milliseconds longest = std::chrono::hours(24);  // Qt counts in int milliseconds
  const auto delay = std::chrono::ceil<milliseconds>(*latest - now());
  wakeUp_.start(std::clamp(delay, milliseconds(0), longest));
}

}  // namespace lunevra
