#pragma once

#include <QObject>

#include "platform/application.h"
#include "platform/displays.h"
#include "platform/lifetime.h"
#include "platform/notification_center.h"
#include "platform/run_loop.h"

class QScreen;

namespace lunevra {

/// The displays as Qt sees them; a change of any kind is announced once a turn of the run loop, on
/// the notification centre given. Frames are in Qt's device-independent points.
class QtDisplays : public Displays {
 public:
  /// All three outlive it; the key window of the application tells the main display.
  QtDisplays(const Application& application, RunLoop& runLoop, NotificationCenter& center);

  [[nodiscard]] std::vector<Screen> screens() const override;
  [[nodiscard]] std::optional<Screen> mainScreen() const override;

 private:
  void watch(const QScreen& screen);
  void announceSoon();

  const Application& application_;
  RunLoop& runLoop_;
  NotificationCenter& center_;
  bool isAnnouncing_ = false;
  QObject receiver_;
  Lifetime lifetime_;
};

}  // namespace lunevra
