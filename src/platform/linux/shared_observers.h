#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <mutex>
#include <vector>

#include "platform/registration.h"

namespace lunevra {

/// Callbacks that one thread calls and others add and end. Ending a registration returns once its
/// callback no longer runs; from within the callback itself it is safe as well.
class SharedObservers {
 public:
  [[nodiscard]] Registration add(std::function<void()> block) {
    const std::lock_guard lock(list_->mutex);
    const auto id = list_->nextId++;
    list_->blocks.emplace(id, std::make_shared<const std::function<void()>>(std::move(block)));
    return Registration([list = std::weak_ptr(list_), id] {
      const auto held = list.lock();
      if (!held) return;
      const std::lock_guard endLock(held->mutex);
      held->blocks.erase(id);
    });
  }

  void notify() const {
    const std::lock_guard lock(list_->mutex);
    std::vector<std::uint64_t> round;
    for (const auto& [id, block] : list_->blocks) round.push_back(id);
    for (const auto id : round) {
      const auto found = list_->blocks.find(id);
      if (found == list_->blocks.end()) continue;
      const auto block = found->second;  // it may end itself
      (*block)();
    }
  }

 private:
  struct List {
    std::recursive_mutex mutex;
    std::map<std::uint64_t, std::shared_ptr<const std::function<void()>>> blocks;
    std::uint64_t nextId = 0;
  };

  std::shared_ptr<List> list_ = std::make_shared<List>();
};

}  // namespace lunevra
