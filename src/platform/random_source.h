#pragma once

#include <cstdint>
#include <span>

namespace lunevra {

/// Cryptographically secure random bytes (on the simulated host: repeatable ones).
class RandomSource {
 public:
  virtual ~RandomSource() = default;
  /// Fills `bytes` entirely, or answers false and leaves them of no use.
  [[nodiscard]] virtual bool fill(std::span<std::uint8_t> bytes) = 0;
};

}  // namespace lunevra
