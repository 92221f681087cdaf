#pragma once

#include <chrono>
#include <thread>

namespace lunevra::host_test {

/// Looks again every few milliseconds until `condition` holds; false if it does not in time.
template <class Condition>
bool eventually(Condition condition,
                std::chrono::milliseconds deadline = std::chrono::seconds(10)) {
  const auto end = std::chrono::steady_clock::now() + deadline;
  while (!condition()) {
    if (std::chrono::steady_clock::now() > end) return false;
    std::this_thread::sleep_for(std::chrono::milliseconds(5));
  }
  return true;
}

}  // namespace lunevra::host_test
