#pragma once

#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "platform/application.h"
#include "platform/displays.h"
#include "platform/key_event_monitor.h"

namespace lunevra {

/// Displays that are plugged in and out by name, listed in the order in which they were first
/// named.
class SimulatedDisplays final : public Displays {
 public:
  [[nodiscard]] std::vector<Screen> screens() const override;
  [[nodiscard]] std::optional<Screen> mainScreen() const override;

  void set(const std::string& name, const Rect& frame);
  void remove(const std::string& name);
  void setMain(const std::string& name) { main_ = name; }
  /// Whether any display has been named yet, attached or not.
  [[nodiscard]] bool isAnyNamed() const { return !named_.empty(); }

 private:
  struct Named {
    std::string name;
    std::optional<Rect> frame;  // absent while unplugged
  };
  Named& named(const std::string& name);

  std::vector<Named> named_;
  std::string main_;
};

class SimulatedApplication;

/// A window that keeps what is set on it and draws nothing.
class SimulatedWindow final : public Window, public std::enable_shared_from_this<SimulatedWindow> {
 public:
  SimulatedWindow(SimulatedApplication& application, const WindowDescription& description);

  void setReleasedWhenClosed(bool /*released*/) override {}
  void setLevel(WindowLevel level) override { level_ = level; }
  void setCollectionBehavior(CollectionBehavior behavior) override { behavior_ = behavior; }
  void setAnimationBehavior(AnimationBehavior /*behavior*/) override {}
  void setBackgroundColor(WindowColor /*color*/) override {}
  void setOpaque(bool /*opaque*/) override {}
  void setHasShadow(bool /*hasShadow*/) override {}
  void setMovable(bool /*movable*/) override {}
  void setIgnoresMouseEvents(bool /*ignores*/) override {}
  void setContentView(std::shared_ptr<WindowContent> content) override {
    content_ = std::move(content);
  }
  void setFrame(const Rect& frame, bool /*display*/) override { frame_ = frame; }
  void orderFrontRegardless() override;
  void orderOut() override;
  void makeKeyWindow() override;
  void close() override;
  [[nodiscard]] Rect frame() const override { return frame_; }
  [[nodiscard]] std::optional<std::string> screenName() const override;

  [[nodiscard]] bool isVisible() const { return isVisible_; }
  [[nodiscard]] WindowLevel level() const { return level_; }
  [[nodiscard]] CollectionBehavior collectionBehavior() const { return behavior_; }

 private:
  SimulatedApplication& application_;
  std::optional<std::string> screenName_;
  Rect frame_;
  WindowLevel level_ = WindowLevel::normal;
  CollectionBehavior behavior_ = CollectionBehavior::standard;
  std::shared_ptr<WindowContent> content_;
  bool isVisible_ = false;
};

/// The window list, the key window and the presentation of a program without a screen.
class SimulatedApplication final : public Application {
 public:
  explicit SimulatedApplication(const SimulatedDisplays& displays) : displays_(displays) {}

  [[nodiscard]] std::vector<std::shared_ptr<Window>> windows() const override;
  [[nodiscard]] std::shared_ptr<Window> keyWindow() const override { return keyWindow_; }
  [[nodiscard]] std::shared_ptr<Window> makeWindow(const WindowDescription& description) override;
  void setPresentationOptions(PresentationOptions options) override { options_ = options; }
  [[nodiscard]] PresentationOptions presentationOptions() const override { return options_; }
  void activateIgnoringOtherApps() override { isActive_ = true; }
  [[nodiscard]] bool isActive() const override { return isActive_; }

  void resignActive() { isActive_ = false; }
  /// A process begins: no lock windows, the default presentation, the window group's window shown.
  void beginProcess();

 private:
  friend class SimulatedWindow;

  const SimulatedDisplays& displays_;
  std::vector<std::shared_ptr<SimulatedWindow>> windows_;
  std::shared_ptr<SimulatedWindow> keyWindow_;
  PresentationOptions options_ = PresentationOptions::standard;
  bool isActive_ = false;
};

class SimulatedKeyEvents final : public KeyEventMonitors {
 public:
  [[nodiscard]] Registration addLocalMonitor(
      KeyEventKind kinds, std::function<KeyEventDisposition(KeyEventKind)> decide) override;

  /// One key event addressed to the program: discarded as soon as one monitor says so.
  [[nodiscard]] KeyEventDisposition send(KeyEventKind kind) const;

 private:
  struct Monitor {
    KeyEventKind kinds;
    std::function<KeyEventDisposition(KeyEventKind)> decide;
  };
  std::shared_ptr<std::map<int, Monitor>> monitors_ = std::make_shared<std::map<int, Monitor>>();
  int nextId_ = 0;
};

}  // namespace lunevra
