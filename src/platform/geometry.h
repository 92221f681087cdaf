#pragma once

namespace lunevra {

/// A rectangle in global display coordinates, in points; y grows downwards.
struct Rect {
  double x = 0.0;
  double y = 0.0;
  double width = 0.0;
  double height = 0.0;

  friend bool operator==(const Rect&, const Rect&) = default;
};

}  // namespace lunevra
