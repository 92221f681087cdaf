#include "platform/linux/system_clock.h"

#include <chrono>

namespace lunevra {

Instant SystemClock::now() const {
  return {TimeInterval(std::chrono::system_clock::now().time_since_epoch()).count()};
}

}  // namespace lunevra
