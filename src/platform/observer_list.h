#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <vector>

#include "platform/registration.h"

namespace lunevra {

/// Callbacks in the order of their registration. Adding and ending them from within a callback is
/// safe: one ended during a round is not called in it any more, one added waits for the next round.
/// One thread only.
class ObserverList {
 public:
  [[nodiscard]] Registration add(std::function<void()> block) {
    const auto id = nextId_++;
    blocks_->emplace(id, std::make_shared<const std::function<void()>>(std::move(block)));
    return Registration([blocks = std::weak_ptr(blocks_), id] {
      if (const auto held = blocks.lock()) held->erase(id);
    });
  }

  void notify() const {
    const auto blocks = blocks_;  // the list's owner may go during the round
    std::vector<std::uint64_t> round;
    round.reserve(blocks->size());
    for (const auto& [id, block] : *blocks) round.push_back(id);
    for (const auto id : round) {
      const auto found = blocks->find(id);
      if (found == blocks->end()) continue;
      const auto block = found->second;
      (*block)();
    }
  }

  [[nodiscard]] bool empty() const { return blocks_->empty(); }

 private:
  using Blocks = std::map<std::uint64_t, std::shared_ptr<const std::function<void()>>>;
  std::shared_ptr<Blocks> blocks_ = std::make_shared<Blocks>();
  std::uint64_t nextId_ = 0;
};

}  // namespace lunevra
