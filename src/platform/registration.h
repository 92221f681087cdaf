#pragma once

#include <functional>
#include <utility>

namespace lunevra {

/// A running timer, an observation, a monitor: whatever it stands for ends when it is destroyed,
/// assigned over or reset. Safe to end from within its own callback.
class [[nodiscard]] Registration {
 public:
  Registration() = default;
  explicit Registration(std::function<void()> end) : end_(std::move(end)) {}
  Registration(Registration&& other) noexcept : end_(std::exchange(other.end_, nullptr)) {}
  Registration& operator=(Registration&& other) noexcept {
    if (this != &other) {
      reset();
      end_ = std::exchange(other.end_, nullptr);
    }
    return *this;
  }
  Registration(const Registration&) = delete;
  Registration& operator=(const Registration&) = delete;
  ~Registration() { reset(); }

  void reset() {
    if (auto end = std::exchange(end_, nullptr)) end();
  }

  explicit operator bool() const { return static_cast<bool>(end_); }

 private:
  std::function<void()> end_;
};

}  // namespace lunevra
