#include "platform/foundation/timer_queue.h"

#include <algorithm>
#include <utility>

namespace lunevra {

Registration TimerQueue::addRepeating(Time now, Time interval, Time tolerance,
                                      std::function<void()> fire) {
  auto timer = std::make_shared<Timer>(Timer{std::move(fire), interval, tolerance});
  timers_->emplace(Order{now + interval, nextId_++}, timer);
  return Registration([timers = std::weak_ptr(timers_), timer = std::weak_ptr(timer)] {
    const auto cancelled = timer.lock();
    const auto held = timers.lock();
    if (!cancelled || !held) return;
    cancelled->isCancelled = true;  // it may be the one that is firing
    std::erase_if(*held, [&](const auto& entry) { return entry.second == cancelled; });
  });
}

void TimerQueue::addOnce(Time due, std::function<void()> work) {
  timers_->emplace(Order{due, nextId_++}, std::make_shared<Timer>(Timer{std::move(work), {}, {}}));
}

std::optional<TimerQueue::Time> TimerQueue::nextDue() const {
  if (timers_->empty()) return std::nullopt;
  return timers_->begin()->first.first;
}

std::optional<TimerQueue::Time> TimerQueue::latestWakeUp() const {
  std::optional<Time> latest;
  for (const auto& [order, timer] : *timers_) {
    const auto limit = order.first + timer->tolerance;
    latest = latest ? std::min(*latest, limit) : limit;
  }
  return latest;
}

bool TimerQueue::fireNextDue(Time now) {
  const auto timers = timers_;  // firing may clear the queue
  if (timers->empty() || timers->begin()->first.first > now) return false;
  auto node = timers->extract(timers->begin());
  const auto timer = node.mapped();
  timer->fire();
  if (timer->interval == Time::zero() || timer->isCancelled) return true;
  auto& due = node.key().first;
  due += timer->interval * ((now - due) / timer->interval + 1);
  timers->insert(std::move(node));
  return true;
}

std::size_t TimerQueue::repeatingCount() const {
  return static_cast<std::size_t>(
      std::count_if(timers_->begin(), timers_->end(),
                    [](const auto& entry) { return entry.second->interval != Time::zero(); }));
}

void TimerQueue::clear() {
  timers_ = std::make_shared<Timers>();
}

}  // namespace lunevra
