#pragma once

#include <optional>
#include <string>
#include <vector>

#include "platform/geometry.h"

namespace lunevra {

/// A display by the computer's own name for its connection; that name is its identity.
struct Screen {
  std::string name;
  Rect frame;

  friend bool operator==(const Screen&, const Screen&) = default;
};

/// The displays attached at this moment, in the computer's order. Main thread only.
class Displays {
 public:
  virtual ~Displays() = default;

  [[nodiscard]] virtual std::vector<Screen> screens() const = 0;
  /// The display that has the keyboard focus; nothing only while there is no display.
  [[nodiscard]] virtual std::optional<Screen> mainScreen() const = 0;
};

}  // namespace lunevra
