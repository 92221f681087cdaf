#pragma once

#include <functional>
#include <memory>
#include <vector>

#include "platform/application.h"
#include "platform/desktop/desktop_window.h"
#include "platform/desktop/floor_guard.h"

namespace lunevra {

/// The program's windows over Qt, and the floor under them, which is up while the presentation
/// options keep the person from other programs. Main thread only.
class QtApplication : public Application, private DesktopWindow::Owner {
 public:
  QtApplication(FloorGuard& floor, RunLoop& runLoop, Log& log);

  [[nodiscard]] std::vector<std::shared_ptr<Window>> windows() const override;
  [[nodiscard]] std::shared_ptr<Window> keyWindow() const override;
  [[nodiscard]] std::shared_ptr<Window> makeWindow(const WindowDescription& description) override;

  void setPresentationOptions(PresentationOptions options) override;
  [[nodiscard]] PresentationOptions presentationOptions() const override { return options_; }

  void activateIgnoringOtherApps() override;
  [[nodiscard]] bool isActive() const override;

  std::function<void(PresentationOptions)> onPresentationOptionsChanged;

 private:
  void orderedFront(DesktopWindow& window) override;
  void becameKey(DesktopWindow& window) override;
  void closed(DesktopWindow& window) override;
  void layPile();
  [[nodiscard]] std::shared_ptr<DesktopWindow> owning(const DesktopWindow& window) const;

  FloorGuard& floor_;
  RunLoop& runLoop_;
  Log& log_;
  PresentationOptions options_ = PresentationOptions::standard;
  std::vector<std::shared_ptr<DesktopWindow>> windows_;
  std::weak_ptr<DesktopWindow> keyWindow_;
};

}  // namespace lunevra
