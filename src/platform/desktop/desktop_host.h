#pragma once

#include <functional>

#include <QObject>
#include <QSocketNotifier>

#include "platform/desktop/floor_guard.h"
#include "platform/desktop/qt_application.h"
#include "platform/desktop/qt_displays.h"
#include "platform/desktop/qt_key_events.h"
#include "platform/foundation/local_notification_center.h"
#include "platform/host.h"
#include "platform/linux/termination_signals.h"

namespace lunevra {

/// The screen, the keyboard and the life of the process on an X11 desktop. Nothing quits the
/// program but an accepted request; losing the X server ends it with a failure, so that whoever
/// supervises it starts it again.
class DesktopHost {
 public:
  /// Call before the application object is made: Qt reads it there.
  static void prepareQt();

  /// Needs the application object; everything given outlives the host.
  DesktopHost(FloorWindow& floor, RunLoop& runLoop, Log& log, NotificationCenter& center);

  [[nodiscard]] Desktop desktop();
  /// From now on a signal that asks the process to end is a request to terminate.
  void handleSignals(TerminationSignals& requests);

  std::function<void()> onResignActive;
  std::function<void(PresentationOptions)> onPresentationOptionsChanged;
  /// Whether to quit; without an answer the program goes on.
  std::function<bool()> onTerminateRequest;

 private:
  /// Requests from the session manager, or from anything else that asks Qt to quit.
  class QuitFilter : public QObject {
   public:
    explicit QuitFilter(DesktopHost& host) : host_(host) {}
    bool eventFilter(QObject* receiver, QEvent* event) override;

   private:
    DesktopHost& host_;
  };

  [[nodiscard]] bool acceptsTermination() const;
  [[noreturn]] void endForLostDisplay();

  Log& log_;
  FloorGuard floor_;
  LocalNotificationCenter workspaceNotifications_;
  QtApplication application_;
  QtDisplays displays_;
  QtKeyEvents keyEvents_;
  QSocketNotifier floorNotifier_;
  std::unique_ptr<QSocketNotifier> signalNotifier_;
  QuitFilter quitFilter_{*this};
};

}  // namespace lunevra
