#pragma once

#include <cstdint>
#include <functional>

#include "platform/registration.h"

namespace lunevra {

enum class KeyEventKind : std::uint32_t { keyDown = 0x400, keyUp = 0x800, flagsChanged = 0x1000 };

constexpr KeyEventKind operator|(KeyEventKind left, KeyEventKind right) {
  return static_cast<KeyEventKind>(static_cast<std::uint32_t>(left) |
                                   static_cast<std::uint32_t>(right));
}

enum class KeyEventDisposition { passOn, discard };

/// Sees key events addressed to the program before its windows do. Main thread only.
class KeyEventMonitors {
 public:
  virtual ~KeyEventMonitors() = default;

  /// `decide` is asked for every event whose kind is among `kinds`.
  [[nodiscard]] virtual Registration addLocalMonitor(
      KeyEventKind kinds, std::function<KeyEventDisposition(KeyEventKind)> decide) = 0;
};

}  // namespace lunevra
