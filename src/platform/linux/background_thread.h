#pragma once

#include <functional>
#include <optional>
#include <thread>

namespace lunevra {

/// A thread that no signal reaches: those are the main thread's business. Nothing if the computer
/// has none left.
[[nodiscard]] std::optional<std::thread> startBackgroundThread(std::function<void()> work);

}  // namespace lunevra
