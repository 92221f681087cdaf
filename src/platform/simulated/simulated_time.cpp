#include "platform/simulated/simulated_time.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace lunevra {

Instant SimulatedTime::now() const {
  const std::chrono::duration<double, std::milli> wall = wallAtUptimeZero_ + uptime_;
  return {wall.count() / 1000.0};
}

Registration SimulatedTime::scheduleRepeating(std::chrono::milliseconds interval,
                                              std::chrono::milliseconds tolerance,
                                              std::function<void()> fire) {
  return timers_.addRepeating(uptime_, interval, tolerance, std::move(fire));
}

void SimulatedTime::after(std::chrono::milliseconds delay, std::function<void()> work) {
  timers_.addOnce(uptime_ + delay, std::move(work));
}

void SimulatedTime::async(std::function<void()> work) {
  mainQueue_.push_back(std::move(work));
}

void SimulatedTime::setWallClock(Instant instant) {
  const Duration wall{std::llround(instant.secondsSince1970 * 1000.0)};
  wallAtUptimeZero_ = wall - std::chrono::duration_cast<Duration>(uptime_);
}

void SimulatedTime::pass(Duration duration) {
  const auto end = uptime_ + duration;
  for (auto due = timers_.nextDue(); due && *due <= end; due = timers_.nextDue()) {
    uptime_ = std::max(uptime_, *due);
    timers_.fireNextDue(uptime_);
    drainMainQueue();
  }
  uptime_ = end;
}

void SimulatedTime::sleep(Duration duration) {
  wallAtUptimeZero_ += duration;
}

void SimulatedTime::drainMainQueue() {
  while (!mainQueue_.empty()) {
    const auto work = std::move(mainQueue_.front());
    mainQueue_.pop_front();
    work();
  }
  turnEnded_();
}

void SimulatedTime::dropProcess() {
  timers_.clear();
  mainQueue_.clear();
}

}  // namespace lunevra
