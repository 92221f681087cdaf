#pragma once

#include <cstdint>

namespace lunevra {

/// What the session allows the person to do outside the program's windows. The sum is a bit set.
enum class PresentationOptions : std::uint32_t {
  standard = 0,
  hideDock = 0x2,
  hideMenuBar = 0x8,
  disableAppleMenu = 0x10,
  disableProcessSwitching = 0x20,
  disableForceQuit = 0x40,
  disableSessionTermination = 0x80,
  disableHideApplication = 0x100,
  disableCursorLocationAssistance = 0x1000,
};

constexpr PresentationOptions operator|(PresentationOptions left, PresentationOptions right) {
  return static_cast<PresentationOptions>(static_cast<std::uint32_t>(left) |
                                          static_cast<std::uint32_t>(right));
}

constexpr bool contains(PresentationOptions options, PresentationOptions option) {
  return (static_cast<std::uint32_t>(options) & static_cast<std::uint32_t>(option)) != 0;
}

}  // namespace lunevra
