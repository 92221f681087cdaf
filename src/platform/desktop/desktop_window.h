#pragma once

#include <memory>

#include <QPointer>
#include <QQuickWindow>
#include <QScreen>

#include "platform/lifetime.h"
#include "platform/log.h"
#include "platform/run_loop.h"
#include "platform/window.h"

namespace lunevra {

/// A window that Qt Quick draws. Until it is first ordered in, nothing of it exists in the window
/// system, and once it is, its content is loaded in a later turn: black comes first. A window at
/// screen-saver level is left alone by the window manager, so it is on every desktop, without
/// shadow, title bar or animation, and cannot be moved; the setters for those have nothing to do.
/// A titled window has the size of its frame, and is hidden when the person closes it. A menu takes
/// the pointer, so that a press elsewhere hides it whatever the window manager thinks of focus.
class DesktopWindow : public Window {
 public:
  /// Who arranges the windows; outlives them.
  class Owner {
   public:
    virtual ~Owner() = default;
    virtual void orderedFront(DesktopWindow& window) = 0;
    virtual void becameKey(DesktopWindow& window) = 0;
    virtual void closed(DesktopWindow& window) = 0;
  };

  DesktopWindow(Owner& owner, RunLoop& runLoop, Log& log, const WindowDescription& description);

  void setReleasedWhenClosed(bool) override {}
  void setLevel(WindowLevel level) override { level_ = level; }
  void setCollectionBehavior(CollectionBehavior) override {}
  void setAnimationBehavior(AnimationBehavior) override {}
  void setBackgroundColor(WindowColor color) override;
  void setOpaque(bool) override {}
  void setHasShadow(bool) override {}
  void setMovable(bool) override {}
  void setIgnoresMouseEvents(bool ignores) override;
  void setContentView(std::shared_ptr<WindowContent> content) override;
  void setFrame(const Rect& frame, bool display) override;

  void orderFrontRegardless() override;
  void orderOut() override;
  void makeKeyWindow() override;
  void close() override;

  [[nodiscard]] Rect frame() const override { return frame_; }
  [[nodiscard]] std::optional<std::string> screenName() const override;

  [[nodiscard]] bool isVisible() const { return window_ && window_->isVisible(); }
  /// The X window; only of a visible one.
  [[nodiscard]] std::uint32_t nativeId() const;

 private:
  class MenuFilter;

  void createNativeWindow();
  void fixSize();
  [[nodiscard]] Qt::WindowFlags flags() const;
  void attachContentLater();
  void attachContent();

  Owner& owner_;
  RunLoop& runLoop_;
  Log& log_;
  Rect frame_;
  QPointer<QScreen> screen_;  // not the window's own: Qt moves windows off a display that goes
  WindowStyle style_;
  std::string title_;
  bool canBecomeKey_;
  WindowLevel level_ = WindowLevel::normal;
  WindowColor color_ = WindowColor::windowBackground;
  bool ignoresMouse_ = false;
  bool isClosed_ = false;
  bool isContentAttached_ = false;
  std::unique_ptr<QQuickWindow> window_;
  std::unique_ptr<QObject> menuFilter_;
  std::shared_ptr<WindowContent> content_;  // goes before the window that shows it
  Lifetime lifetime_;
};

}  // namespace lunevra
