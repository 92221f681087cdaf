#pragma once

#include <unistd.h>
#include <utility>

namespace lunevra {

/// A file descriptor that is closed with its owner.
class UniqueDescriptor {
 public:
  UniqueDescriptor() = default;
  explicit UniqueDescriptor(int descriptor) : descriptor_(descriptor) {}
  UniqueDescriptor(UniqueDescriptor&& other) noexcept
      : descriptor_(std::exchange(other.descriptor_, -1)) {}
  UniqueDescriptor& operator=(UniqueDescriptor&& other) noexcept {
    if (this != &other) {
      close();
      descriptor_ = std::exchange(other.descriptor_, -1);
    }
    return *this;
  }
  UniqueDescriptor(const UniqueDescriptor&) = delete;
  UniqueDescriptor& operator=(const UniqueDescriptor&) = delete;
  ~UniqueDescriptor() { close(); }

  [[nodiscard]] int get() const { return descriptor_; }
  explicit operator bool() const { return descriptor_ >= 0; }

 private:
  void close() {
    if (descriptor_ >= 0) ::close(descriptor_);
  }

  int descriptor_ = -1;
};

}  // namespace lunevra
