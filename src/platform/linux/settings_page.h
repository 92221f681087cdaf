#pragma once

#include <string>
#include <vector>

namespace lunevra {

/// The page of the desktop's settings that lists what starts at login.
class SettingsPage {
 public:
  /// `desktops` as in XDG_CURRENT_DESKTOP, `searchPath` as in PATH.
  SettingsPage(std::string desktops, std::string searchPath);

  /// Opens it without waiting; false if this desktop has none.
  [[nodiscard]] bool open() const;

 private:
  [[nodiscard]] std::vector<std::string> command() const;
  [[nodiscard]] std::string find(const std::string& program) const;

  std::string desktops_;
  std::string searchPath_;
};

}  // namespace lunevra
