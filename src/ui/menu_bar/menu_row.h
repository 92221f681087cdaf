#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>

namespace lunevra {

/// The rows of the menu-bar extra, from top to bottom.
enum class MenuItem : std::uint8_t {
  header,
  upperDivider,
  bedtime,
  release,
  escapeKey,
  commitment,
  middleDivider,
  nightlySwitch,
  settings,
  lowerDivider,
  quit,
};

enum class MenuRowKind : std::uint8_t { header, divider, label, toggle, button };
enum class MenuTint : std::uint8_t { primary, secondary, green, orange };

/// What one row shows. A disabled row does nothing when it is pressed.
struct MenuRow {
  MenuRowKind kind = MenuRowKind::divider;
  std::string text = {};
  std::string detail = {};      // the header's second line
  std::string symbolName = {};  // empty for a divider
  MenuTint tint = MenuTint::primary;
  bool isShown = true;
  bool isEnabled = true;
  bool isChecked = false;

  friend bool operator==(const MenuRow&, const MenuRow&) = default;
};

class MenuRows {
 public:
  [[nodiscard]] MenuRow& operator[](MenuItem item) { return rows_[static_cast<std::size_t>(item)]; }
  [[nodiscard]] const MenuRow& operator[](MenuItem item) const {
    return rows_[static_cast<std::size_t>(item)];
  }
  [[nodiscard]] auto begin() const { return rows_.begin(); }
  [[nodiscard]] auto end() const { return rows_.end(); }

 private:
  std::array<MenuRow, 11> rows_;
};

}  // namespace lunevra
