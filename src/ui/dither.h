#pragma once

#include <algorithm>
#include <cmath>

namespace lunevra {

/// An even, fine-grained noise over the pixels, from 0 to 1. Added before a component is cut to a
/// whole number, it turns the bands of a dark gradient into a grain too fine to be seen.
[[nodiscard]] inline float ditherNoise(int x, int y) {
  const float ramp = 0.06711056F * static_cast<float>(x) + 0.00583715F * static_cast<float>(y);
  const float scattered = 52.9829189F * (ramp - std::floor(ramp));
  return scattered - std::floor(scattered);
}

/// A component of 0…1 as one of 0…255.
[[nodiscard]] inline int dithered(float component, float noise) {
  return std::clamp(static_cast<int>(component * 255.0F + noise), 0, 255);
}

}  // namespace lunevra
