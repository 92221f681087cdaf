// Draws the lock screen in every phase at several sizes of display, for looking at:
//   lunevra-gallery FOLDER [WIDTHxHEIGHT…]
// The phases are those of a real engine on a simulated computer.

#include <cstdio>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include <QtCore/qdir.h>
#include <QtCore/qeventloop.h>
#include <QtCore/qtimer.h>
#include <QtGui/qguiapplication.h>
#include <QtGui/qimage.h>
#include <QtQuick/qquickwindow.h>

#include "engine/shutdown_manager.h"
#include "platform/simulated/simulated_host.h"
#include "ui/lock_screen/lock_screen_content.h"

namespace {

using namespace lunevra;
using std::chrono_literals::operator""s;

constexpr int settlingMilliseconds = 1500;  // longer than every fade and spring

Instant evening(SimulatedHost& computer, int hour, int minute) {
  return *computer.calendar.instant(
      {.year = 2026, .month = 3, .day = 14, .hour = hour, .minute = minute, .second = 0});
}

/// The engine on its computer, from the afternoon on.
struct Computer {
  explicit Computer(std::uint64_t seed) { simulated.random.seed(seed); }
  bool setAfternoon() {
    simulated.log.setObserver(
        [](const std::string& line) { std::fprintf(stderr, "%s\n", line.c_str()); });
    simulated.time.setWallClock(evening(simulated, 15, 0));
    return true;
  }
  void configureKey() { simulated.keychain.setItem(Bytes(32, 0x5a)); }
  void beginNight() {
    simulated.time.setWallClock(evening(simulated, 22, 47));
    engine.evaluateSchedule();
    simulated.time.drainMainQueue();
  }

  SimulatedHost simulated;
  bool isAfternoon = setAfternoon();  // before the engine first looks at the clock
  SyncedStore store{simulated.host()};
  PhysicalKeyManager keyManager{simulated.host()};
  FirewallHelperClient firewall{simulated.host()};
  ShutdownManager engine{simulated.host(), store, keyManager, firewall};
};

/// A display of this size with the engine's lock screen on it.
class Display {
 public:
  Display(Computer& computer, QSize size)
      : content_(lockScreenFactory(computer.simulated.host(),
                                   computer.simulated.time)(computer.engine)) {
    window_.resize(size);
    window_.show();
    std::static_pointer_cast<QuickContent>(content_)->attach(window_);
  }

  void photograph(const QDir& folder, const QString& name) {
    QEventLoop settling;
    QTimer::singleShot(settlingMilliseconds, &settling, &QEventLoop::quit);
    settling.exec();
    const auto image = window_.grabWindow();
    const auto file =
        QStringLiteral("%1x%2-%3.png").arg(image.width()).arg(image.height()).arg(name);
    if (!image.save(folder.filePath(file)))
      std::fprintf(stderr, "could not write %s\n", qPrintable(folder.filePath(file)));
  }

 private:
  QQuickWindow window_;
  std::shared_ptr<WindowContent> content_;  // goes before its window
};

void photographNight(const QDir& folder, QSize size) {
  Computer computer(7);
  computer.configureKey();
  Display display(computer, size);
  display.photograph(folder, "1-idle");
  computer.beginNight();
  for (int left = 3; left >= 1; --left) {
    display.photograph(folder, QStringLiteral("2-countdown-%1").arg(left));
    computer.simulated.time.pass(1s);
  }
  display.photograph(folder, "3-blocking-key");
}

void photographBlocking(const QDir& folder, QSize size, bool isCommitted) {
  Computer computer(isCommitted ? 21 : 4);
  if (isCommitted)
    computer.engine.activateCommitmentLock(evening(computer.simulated, 15, 0) + TimeInterval{2e5});
  computer.beginNight();
  computer.simulated.time.pass(3s);
  Display display(computer, size);
  display.photograph(folder, isCommitted ? "5-blocking-commitment" : "4-blocking-no-key");
}

std::vector<QSize> sizesFrom(const QStringList& arguments) {
  std::vector<QSize> sizes;
  for (const auto& argument : arguments) {
    const auto parts = argument.split('x');
    sizes.emplace_back(parts.front().toInt(), parts.back().toInt());
  }
  if (sizes.empty()) sizes = {{800, 600}, {1366, 768}, {1920, 1080}, {1080, 1920}, {3440, 1440}};
  return sizes;
}

}  // namespace

int main(int argc, char** argv) {
  qputenv("QT_QPA_PLATFORM", "offscreen");
  QQuickWindow::setGraphicsApi(QSGRendererInterface::Software);
  const QGuiApplication application(argc, argv);
  const auto arguments = QGuiApplication::arguments();
  if (arguments.size() < 2) {
    std::fprintf(stderr, "usage: lunevra-gallery FOLDER [WIDTHxHEIGHT...]\n");
    return 2;
  }
  const QDir folder(arguments.at(1));
  folder.mkpath(".");
  for (const auto& size : sizesFrom(arguments.mid(2))) {
    photographNight(folder, size);
    photographBlocking(folder, size, false);
    photographBlocking(folder, size, true);
  }
  return 0;
}
