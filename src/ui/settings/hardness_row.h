#pragma once

#include <cstdint>
#include <string>

namespace lunevra {

/// Armed, waiting for the person's approval, not installed.
enum class HardnessStatus : std::uint8_t { green, yellow, red };

/// What the small button at the end of a row runs.
enum class HardnessAction : std::uint8_t {
  none,
  openLoginItems,
  installAgent,
  installHelper,
  uninstallHelper,
};

/// One layer of protection, as the dashboard shows it.
struct HardnessRow {
  std::string title = {};
  HardnessStatus status = HardnessStatus::red;
  std::string detail = {};
  HardnessAction action = HardnessAction::none;

  friend bool operator==(const HardnessRow&, const HardnessRow&) = default;
};

/// The button's label; empty without an action.
[[nodiscard]] std::string hardnessActionLabel(HardnessAction action);

}  // namespace lunevra
