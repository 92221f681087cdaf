#pragma once

#include "platform/desktop/status_notifier_item.h"
#include "platform/desktop/tray_menu.h"
#include "shell/torvane_app.h"
#include "ui/menu_bar/menu_bar_model.h"

namespace lunevra {

/// The menu-bar extra in the desktop's tray: the moon, tonight's times as its tool tip, and the
/// menu when it is pressed. A tray that shows only menus of its own gets the same rows as one.
class MenuBarExtra {
 public:
  /// Both outlive it. Needs the application object.
  MenuBarExtra(TorvaneApp& app, RunLoop& runLoop);

 private:
  void show();
  void choose(MenuItem row);

  TorvaneApp& app_;
  MenuBarModel model_;
  TrayMenu menu_;
  StatusNotifierItem item_;
  Registration observation_;
};

}  // namespace lunevra
