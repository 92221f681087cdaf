#pragma once

#include <functional>
#include <gtest/gtest.h>
#include <memory>

#include <QtCore/qcoreapplication.h>
#include <QtCore/qdeadlinetimer.h>
#include <QtGui/qimage.h>
#include <QtQuick/qquickwindow.h>

#include "engine/shutdown_manager.h"
#include "platform/simulated/simulated_host.h"
#include "ui/lock_screen/lock_screen_content.h"

namespace lunevra {

/// A lock window over an engine on a simulated computer, from the afternoon on.
class LockScreenStage : public testing::Test {
 protected:
  void setTime(int hour) {
    computer.time.setWallClock(*computer.calendar.instant(
        {.year = 2026, .month = 3, .day = 14, .hour = hour, .minute = 0}));
  }
  void beginNight() {
    setTime(22);
    engine.evaluateSchedule();
    computer.time.drainMainQueue();
  }
  void beginBlocking() {
    beginNight();
    computer.time.pass(std::chrono::seconds(3));
  }
  void show(QSize size = {800, 600}) {
    window = std::make_unique<QQuickWindow>();
    window->resize(size);
    window->show();
    content = lockScreenFactory(computer.host(), ticks)(engine);
    std::static_pointer_cast<QuickContent>(content)->attach(*window);
  }
  static bool eventually(const std::function<bool()>& condition) {
    const QDeadlineTimer deadline(20000);
    while (!deadline.hasExpired()) {
      if (condition()) return true;
      QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents, 50);
    }
    return false;
  }
  /// The mean lightness of a part of the picture, 0 to 255.
  static double lightness(const QImage& image, QRect part) {
    double sum = 0.0;
    for (int y = part.top(); y <= part.bottom(); ++y)
      for (int x = part.left(); x <= part.right(); ++x) sum += qGray(image.pixel(x, y));
    return sum / (part.width() * part.height());
  }

  SimulatedHost computer;
  bool isAfternoon = (setTime(15), true);
  SyncedStore store{computer.host()};
  PhysicalKeyManager keyManager{computer.host()};
  FirewallHelperClient firewall{computer.host()};
  ShutdownManager engine{computer.host(), store, keyManager, firewall};
  SimulatedTime ticks;
  std::unique_ptr<QQuickWindow> window;
  std::shared_ptr<WindowContent> content;  // goes before its window
};

}  // namespace lunevra
