#pragma once

#include <cstdint>
#include <map>
#include <memory>

#include <QObject>

#include "platform/key_event_monitor.h"

namespace lunevra {

/// Sees Qt's key events before any window or shortcut does. Keys that are only modifiers count as
/// changes of the flags. An event that one monitor discards reaches nobody.
class QtKeyEvents : public KeyEventMonitors {
 public:
  /// Needs the application object.
  QtKeyEvents();

  [[nodiscard]] Registration addLocalMonitor(
      KeyEventKind kinds, std::function<KeyEventDisposition(KeyEventKind)> decide) override;

 private:
  struct Monitor {
    KeyEventKind kinds;
    std::function<KeyEventDisposition(KeyEventKind)> decide;
  };
  using Monitors = std::map<std::uint64_t, std::shared_ptr<const Monitor>>;

  class Filter : public QObject {
   public:
    explicit Filter(const Monitors& monitors) : monitors_(monitors) {}
    bool eventFilter(QObject* receiver, QEvent* event) override;

   private:
    [[nodiscard]] bool isDiscarded(KeyEventKind kind) const;
    const Monitors& monitors_;
  };

  std::shared_ptr<Monitors> monitors_ = std::make_shared<Monitors>();
  std::uint64_t nextId_ = 0;
  Filter filter_{*monitors_};
};

}  // namespace lunevra
