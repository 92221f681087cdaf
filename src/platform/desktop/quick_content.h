#pragma once

#include "platform/window.h"

class QQuickWindow;

namespace lunevra {

/// Window content that Qt Quick draws.
class QuickContent : public WindowContent {
 public:
  /// Called once, after the window has been shown black: loads the content and keeps it sized to
  /// the window. The content goes before the window does. Main thread only.
  virtual void attach(QQuickWindow& window) = 0;
};

}  // namespace lunevra
