#pragma once

#include <cstdint>

namespace lunevra {

/// The engine's phase. The lock is up whenever it is not `idle`. `warning` is reserved: the engine
/// never enters it, and readers treat it like `blocking`.
enum class BlockingState : std::uint8_t { idle, warning, countdown, blocking };

/// Posted on the default notification centre each time the engine assigns its phase, also with an
/// unchanged value.
inline constexpr const char* blockingStateChangedNotification = "BlockingStateChanged";

}  // namespace lunevra
