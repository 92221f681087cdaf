#pragma once

#include <memory>
#include <vector>

#include "platform/presentation_options.h"
#include "platform/window.h"

namespace lunevra {

/// The program as the window system knows it. Main thread only.
class Application {
 public:
  virtual ~Application() = default;

  /// Every window that has not been closed, shown or not, in order of creation.
  [[nodiscard]] virtual std::vector<std::shared_ptr<Window>> windows() const = 0;
  [[nodiscard]] virtual std::shared_ptr<Window> keyWindow() const = 0;
  [[nodiscard]] virtual std::shared_ptr<Window> makeWindow(
      const WindowDescription& description) = 0;

  /// Takes effect before the call returns as far as the window system allows; what it refuses (a
  /// grab that another program holds) is retried until it holds or the options change again.
  virtual void setPresentationOptions(PresentationOptions options) = 0;
  [[nodiscard]] virtual PresentationOptions presentationOptions() const = 0;

  virtual void activateIgnoringOtherApps() = 0;
  [[nodiscard]] virtual bool isActive() const = 0;
};

}  // namespace lunevra
