#pragma once

#include <memory>
#include <utility>

namespace lunevra {

/// Lets deferred work hold its owner weakly: the owner keeps a `Lifetime` as its last member and
/// hands out guarded callables, which do nothing once it is gone. Not for use across threads.
class Lifetime {
 public:
  template <class Work>
  [[nodiscard]] auto guard(Work work) const {
    return
        [alive = std::weak_ptr<const char>(token_), work = std::move(work)](auto&&... arguments) {
          if (const auto held = alive.lock()) work(std::forward<decltype(arguments)>(arguments)...);
        };
  }

 private:
  std::shared_ptr<const char> token_ = std::make_shared<const char>('\0');
};

}  // namespace lunevra
