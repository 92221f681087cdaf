#pragma once

#include <functional>

#include "ui/engine_follower.h"
#include "ui/menu_bar/menu_row.h"

namespace lunevra {

/// What the menu-bar extra shows and does. Every value stays as it is between two calls of the
/// observers, who are told after a change. Main thread only.
class MenuBarModel {
 public:
  struct Actions {
    std::function<void()> openSettings;
    std::function<void()> terminate;  ///< a request, which may still be refused
  };

  /// Everything given outlives the model.
  MenuBarModel(RunLoop& runLoop, ShutdownManager& engine, Actions actions);

  [[nodiscard]] const MenuRows& rows() const { return rows_; }
  /// While drawn, what goes by without the engine changing is read every few seconds.
  void setDrawn(bool isDrawn) { follower_.setDrawn(isDrawn); }
  /// Before it is drawn once.
  void refresh() { follower_.readNow(); }
  [[nodiscard]] Registration observeChanges(std::function<void()> changed) {
    return follower_.observeChanges(std::move(changed));
  }

  // What pressing a row does: nothing while its row is disabled or has another form.
  void setEnabled(bool isEnabled);
  void openSettings();
  void quit();

 private:
  void read();
  [[nodiscard]] MenuRow header() const;
  [[nodiscard]] MenuRow escapeKey() const;
  [[nodiscard]] MenuRow commitment() const;
  [[nodiscard]] MenuRow nightlySwitch() const;
  [[nodiscard]] MenuRow quitRow() const;
  [[nodiscard]] bool isIdle() const;

  ShutdownManager& engine_;
  Actions actions_;
  MenuRows rows_;
  EngineFollower follower_;
};

/// Tonight's two times in one line.
[[nodiscard]] std::string tonightText(const ShutdownManager& engine);

}  // namespace lunevra
