#pragma once

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>

namespace lunevra {

/// An even, fine-grained noise over the pixels, from 0 to 1. Added before a component is cut to a
/// whole number, it turns the bands of a dark gradient into a grain too fine to be seen.
class DitherNoise {
 public:
  DitherNoise() {
    for (int y = 0; y < side; ++y)
      for (int x = 0; x < side; ++x) tile_[index(x, y)] = scattered(x, y);
  }
  [[nodiscard]] float operator()(int x, int y) const { return tile_[index(x, y)]; }

 private:
  static constexpr int side = 128;  // a tile is looked up far faster than it is computed

  static std::size_t index(int x, int y) {
    return static_cast<std::size_t>((y & (side - 1)) * side + (x & (side - 1)));
  }
  static float scattered(int x, int y) {
    const float ramp = 0.06711056F * static_cast<float>(x) + 0.00583715F * static_cast<float>(y);
    const float scaled = 52.9829189F * (ramp - std::floor(ramp));
    return scaled - std::floor(scaled);
  }

  std::array<float, static_cast<std::size_t>(side) * side> tile_{};
};

/// A component of 0…1 as one of 0…255.
[[nodiscard]] inline int dithered(float component, float noise) {
  return std::clamp(static_cast<int>(component * 255.0F + noise), 0, 255);
}

}  // namespace lunevra
