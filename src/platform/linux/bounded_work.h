#pragma once

#include <chrono>
#include <functional>
#include <future>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <utility>

#include "platform/linux/background_thread.h"

namespace lunevra {

/// Work on things that may not answer for minutes, like a drive that is failing, done for a caller
/// who cannot wait for them. Main thread only; the work runs on another and keeps what it needs by
/// value, for it may end after its owner.
class BoundedWork {
 public:
  /// What `work` answers, or nothing if it takes longer than `patience`: then it goes on unseen,
  /// and until it ends there is no answer about the same `subject`.
  template <class Result>
  [[nodiscard]] std::optional<Result> run(const std::string& subject,
                                          std::chrono::milliseconds patience,
                                          std::function<Result()> work) {
    forgetEnded();
    if (unanswered_.contains(subject)) return std::nullopt;
    auto task = std::make_shared<std::packaged_task<Result()>>(std::move(work));
    const auto answer = task->get_future().share();
    auto thread = startBackgroundThread([task] { (*task)(); });
    if (!thread) return std::nullopt;
    thread->detach();
    if (answer.wait_for(patience) == std::future_status::ready) return answer.get();
    unanswered_.emplace(subject, [answer] {
      return answer.wait_for(std::chrono::seconds(0)) == std::future_status::ready;
    });
    return std::nullopt;
  }

 private:
  void forgetEnded() {
    std::erase_if(unanswered_, [](const auto& entry) { return entry.second(); });
  }

  std::map<std::string, std::function<bool()>> unanswered_;  // by subject: whether it has ended
};

}  // namespace lunevra
