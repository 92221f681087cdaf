#pragma once

#include <memory>

#include "platform/open_panel.h"
#include "platform/run_loop.h"

class QQmlEngine;

namespace lunevra {

/// A folder chooser in the program's own look, on the display with the pointer; no dialog of
/// another process, which a lock could not close. One panel at a time: opening another cancels the
/// first, and so does the end of this object. The views' engine is loaded with the first panel.
/// Main thread only.
class QtOpenPanels : public OpenPanels {
 public:
  /// Needs the application object by the time of the first panel; the run loop outlives this.
  explicit QtOpenPanels(RunLoop& runLoop);
  ~QtOpenPanels() override;
  QtOpenPanels(const QtOpenPanels&) = delete;
  QtOpenPanels& operator=(const QtOpenPanels&) = delete;

  void chooseFolder(const FolderPanelRequest& request,
                    std::function<void(std::optional<std::string>)> completion) override;
  /// Puts the panel away that is open, as if the person had cancelled it.
  void cancel();

 private:
  class Panel;

  RunLoop& runLoop_;
  std::unique_ptr<QQmlEngine> engine_;
  std::unique_ptr<Panel> panel_;
};

/// The folder in which this computer mounts removable drives where the logic says "/Volumes"; any
/// other path is itself.
[[nodiscard]] std::string localFolder(const std::string& path);

}  // namespace lunevra
