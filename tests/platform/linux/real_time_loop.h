#pragma once

#include <condition_variable>
#include <deque>
#include <functional>
#include <mutex>

#include "platform/foundation/timer_queue.h"
#include "platform/run_loop.h"

namespace lunevra {

/// A run loop in real time for tests without a toolkit. It turns only while `runUntil` runs.
class RealTimeLoop : public RunLoop {
 public:
  [[nodiscard]] Registration scheduleRepeating(std::chrono::milliseconds interval,
                                               std::chrono::milliseconds tolerance,
                                               std::function<void()> fire) override {
    return timers_.addRepeating(now(), interval, tolerance, std::move(fire));
  }
  void after(std::chrono::milliseconds delay, std::function<void()> work) override {
    timers_.addOnce(now() + delay, std::move(work));
  }
  void async(std::function<void()> work) override {
    const std::lock_guard lock(mutex_);
    queue_.push_back(std::move(work));
    arrived_.notify_one();
  }

  bool runUntil(const std::function<bool()>& condition,
                std::chrono::milliseconds patience = std::chrono::seconds{10}) {
    const auto deadline = now() + patience;
    while (!condition()) {
      if (now() > deadline) return false;
      turn();
    }
    return true;
  }
  void turn() {
    while (timers_.fireNextDue(now())) {
    }
    for (auto& work : takeQueue()) work();
  }

 private:
  static TimerQueue::Time now() { return std::chrono::steady_clock::now().time_since_epoch(); }
  std::deque<std::function<void()>> takeQueue() {
    std::unique_lock lock(mutex_);
    arrived_.wait_for(lock, std::chrono::milliseconds{2}, [this] { return !queue_.empty(); });
    return std::exchange(queue_, {});
  }

  TimerQueue timers_;
  std::mutex mutex_;
  std::condition_variable arrived_;
  std::deque<std::function<void()>> queue_;
};

}  // namespace lunevra
