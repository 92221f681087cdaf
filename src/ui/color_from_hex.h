#pragma once

#include <string_view>

namespace lunevra {

/// An sRGB colour; each component runs from 0 to 1.
struct Color {
  double red = 0.0;
  double green = 0.0;
  double blue = 0.0;
  double alpha = 1.0;

  friend bool operator==(const Color&, const Color&) = default;
};

/// Reads "rgb", "rrggbb" or "aarrggbb", whatever signs surround it. Any other length gives a yellow
/// that nothing else uses, so that the mistake is seen.
[[nodiscard]] Color colorFromHex(std::string_view hex);

}  // namespace lunevra
