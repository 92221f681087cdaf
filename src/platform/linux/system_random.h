#pragma once

#include "platform/random_source.h"

namespace lunevra {

/// The kernel's random bytes. Any thread.
class SystemRandom : public RandomSource {
 public:
  [[nodiscard]] bool fill(std::span<std::uint8_t> bytes) override;
};

}  // namespace lunevra
