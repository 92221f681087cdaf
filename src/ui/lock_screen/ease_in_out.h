#pragma once

#include <algorithm>

namespace lunevra {

/// Slow at both ends, through (0, 0), (½, ½) and (1, 1); clamped outside.
[[nodiscard]] constexpr double easeInOut(double progress) {
  const double p = std::clamp(progress, 0.0, 1.0);
  return p * p * (3.0 - 2.0 * p);
}

}  // namespace lunevra
