#pragma once

#include "platform/instant.h"

namespace lunevra {

/// The computer's wall clock. It may be set backwards or forwards at any time.
class Clock {
 public:
  virtual ~Clock() = default;
  [[nodiscard]] virtual Instant now() const = 0;
};

}  // namespace lunevra
