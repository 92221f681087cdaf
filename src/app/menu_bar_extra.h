#pragma once

#include "platform/desktop/status_notifier_item.h"
#include "shell/torvane_app.h"
#include "ui/engine_follower.h"

namespace lunevra {

/// The menu-bar extra in the desktop's tray: the moon, tonight's times as its tool tip, and the
/// menu when it is pressed.
class MenuBarExtra {
 public:
  /// Both outlive it. Needs the application object.
  MenuBarExtra(TorvaneApp& app, RunLoop& runLoop);

 private:
  TorvaneApp& app_;
  StatusNotifierItem item_;
  EngineFollower follower_;
};

}  // namespace lunevra
