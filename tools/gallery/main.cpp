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

constexpr int settlingMilliseconds = 2500;  // longer than every fade and spring

Instant evening(SimulatedHost& computer, int hour, int minute) {
  return *computer.calendar.instant(
      {.year = 2026, .month = 3, .day = 14, .hour = hour, .minute = minute, .second = 0});
}

/// The engine on its computer, from the afternoon on.
struct Computer {
  explicit Computer(std::uint64_t seed) {
    simulated.random.seed(seed);
    simulated.log.setObserver(
        [](const std::string& line) { std::fprintf(stderr, "%s\n", line.c_str()); });
    simulated.time.setWallClock(evening(simulated, 15, 0));
  }
  void configureKey() { simulated.keychain.setItem(Bytes(32, 0x5a)); }
  void beginNight() {
    simulated.time.setWallClock(evening(simulated, 22, 47));
    engine.evaluateSchedule();
    simulated.time.drainMainQueue();
  }

  SimulatedHost simulated;
  SyncedStore store{simulated.host()};
  PhysicalKeyManager keyManager{simulated.host()};
  FirewallHelperClient firewall{simulated.host()};
  ShutdownManager engine{simulated.host(), store, keyManager, firewall};
};

/// One window a size, all showing the same engine.
class Wall {
 public:
  Wall(Computer& computer, const std::vector<QSize>& sizes) {
    const auto factory = lockScreenFactory(computer.simulated.host(), computer.simulated.time);
    for (const auto& size : sizes) {
      auto& picture = pictures_.emplace_back();
      picture.window = std::make_unique<QQuickWindow>();
      picture.window->resize(size);
      picture.window->show();
      picture.content = factory(computer.engine);
      std::static_pointer_cast<QuickContent>(picture.content)->attach(*picture.window);
    }
  }

  void photograph(const QDir& folder, const QString& name) {
    QEventLoop settling;
    QTimer::singleShot(settlingMilliseconds, &settling, &QEventLoop::quit);
    settling.exec();
    for (const auto& picture : pictures_) {
      const auto image = picture.window->grabWindow();
      const auto file =
          QStringLiteral("%1x%2-%3.png").arg(image.width()).arg(image.height()).arg(name);
      if (!image.save(folder.filePath(file)))
        std::fprintf(stderr, "could not write %s\n", qPrintable(folder.filePath(file)));
    }
  }

 private:
  struct Picture {
    std::unique_ptr<QQuickWindow> window;
    std::shared_ptr<WindowContent> content;  // goes before its window
  };
  std::vector<Picture> pictures_;
};

void photographNight(const QDir& folder, const std::vector<QSize>& sizes) {
  Computer computer(7);
  computer.configureKey();
  Wall wall(computer, sizes);
  wall.photograph(folder, "1-idle");
  computer.beginNight();
  for (int left = 3; left >= 1; --left) {
    wall.photograph(folder, QStringLiteral("2-countdown-%1").arg(left));
    computer.simulated.time.pass(1s);
  }
  wall.photograph(folder, "3-blocking-key");
}

void photographBlocking(const QDir& folder, const std::vector<QSize>& sizes, bool isCommitted) {
  Computer computer(isCommitted ? 21 : 4);
  if (isCommitted)
    computer.engine.activateCommitmentLock(evening(computer.simulated, 15, 0) + TimeInterval{2e5});
  computer.beginNight();
  computer.simulated.time.pass(3s);
  Wall wall(computer, sizes);
  wall.photograph(folder, isCommitted ? "5-blocking-commitment" : "4-blocking-no-key");
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
  const auto sizes = sizesFrom(arguments.mid(2));
  photographNight(folder, sizes);
  photographBlocking(folder, sizes, false);
  photographBlocking(folder, sizes, true);
  return 0;
}
