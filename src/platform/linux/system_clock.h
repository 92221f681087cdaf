#pragma once

#include "platform/clock.h"

namespace lunevra {

/// The computer's real-time clock. Any thread.
class SystemClock : public Clock {
 public:
  [[nodiscard]] Instant now() const override;
};

}  // namespace lunevra
