// Draws the menu and the settings window in every state, for looking at:
//   [QT_SCALE_FACTOR=2] lunevra-daytime-gallery FOLDER
// The states are those of a real engine on a simulated computer.

#include <cstdio>
#include <functional>
#include <string>

#include <QtCore/qdir.h>
#include <QtCore/qeventloop.h>
#include <QtCore/qtimer.h>
#include <QtGui/qevent.h>
#include <QtGui/qguiapplication.h>
#include <QtGui/qimage.h>
#include <QtQuick/qquickitem.h>
#include <QtQuick/qquickwindow.h>

#include "app/program.h"
#include "platform/simulated/simulated_host.h"
#include "store/settings_keys.h"
#include "ui/daytime/daytime_content.h"

namespace {

using namespace lunevra;

constexpr int settlingMilliseconds = 400;  // longer than every animation

/// The engine on its computer, from the afternoon on.
struct Computer {
  Computer() {
    simulated.log.setObserver(
        [](const std::string& line) { std::fprintf(stderr, "%s\n", line.c_str()); });
    setTime(15);
    program = std::make_unique<Program>(simulated.host(), simulated.desktop(),
                                        [](ShutdownManager&) { return nullptr; });
  }
  void setTime(int hour) {
    simulated.time.setWallClock(*simulated.calendar.instant(
        {.year = 2026, .month = 3, .day = 14, .hour = hour, .minute = 0, .second = 0}));
  }
  [[nodiscard]] ShutdownManager& engine() const { return program->app().shutdownManager(); }
  void configureKey() {
    simulated.keychain.setItem(Bytes(32, 0x5a));
    engine().refreshPhysicalKeyStatus();
  }
  void commit() { engine().activateCommitmentLock(simulated.time.now() + TimeInterval{2e5}); }
  void armEverything() {
    configureKey();
    simulated.services.agent("").setStatus(ServiceStatus::enabled);
    simulated.services.daemon("").setStatus(ServiceStatus::enabled);
    simulated.defaults.standard().set(settings_key::firewallEnabled, true);
  }
  /// Services that wait to be approved.
  void leaveUnapproved() {
    configureKey();
    simulated.services.agent("").setStatus(ServiceStatus::requiresApproval);
    simulated.services.daemon("").setStatus(ServiceStatus::requiresApproval);
  }
  void beginNight() {
    setTime(22);
    engine().evaluateSchedule();
  }

  SimulatedHost simulated;
  std::unique_ptr<Program> program;
};

using Prepare = std::function<void(Computer&)>;

void settle(Computer& computer) {
  computer.simulated.time.drainMainQueue();
  QEventLoop settling;
  QTimer::singleShot(settlingMilliseconds, &settling, &QEventLoop::quit);
  settling.exec();
}

void save(const QImage& image, const QDir& folder, const QString& name) {
  const auto file = folder.filePath(name + ".png");
  if (!image.save(file)) std::fprintf(stderr, "could not write %s\n", qPrintable(file));
}

void photographMenu(const QDir& folder, const QString& name, const Prepare& prepare) {
  Computer computer;
  prepare(computer);
  QQuickWindow window;
  window.show();
  const auto content = menuBarContent(computer.simulated.host(), computer.engine(), {}, [] {});
  content->attach(window);
  settle(computer);
  save(window.grabWindow(), folder, "menu-" + name);
}

/// A descendant by its name; the names of views made of parts are those of their items.
QQuickItem* find(QQuickItem& within, const QString& name) {
  for (auto* const item : within.childItems()) {
    if (item->objectName() == name) return item;
    if (auto* const found = find(*item, name)) return found;
  }
  return nullptr;
}

void press(QQuickItem& item) {
  item.forceActiveFocus(Qt::TabFocusReason);
  for (const auto type : {QEvent::KeyPress, QEvent::KeyRelease}) {
    QKeyEvent event(type, Qt::Key_Space, Qt::NoModifier);
    QCoreApplication::sendEvent(item.window(), &event);
  }
}

/// The window once a control of it has been pressed.
void photographPressed(const QDir& folder, const QString& name, const QString& control,
                       const Prepare& prepare) {
  Computer computer;
  prepare(computer);
  QQuickWindow window;
  window.resize(520, 760);
  window.show();
  const auto content = settingsContent(computer.simulated.host(), computer.engine(), {});
  content->attach(window);
  window.requestActivate();
  settle(computer);
  press(*find(*content->root(), control));
  settle(computer);
  save(window.grabWindow(), folder, "settings-" + name);
}

/// One picture of the window for each screen that it takes to show it to the end.
void photographSettings(const QDir& folder, const QString& name, QSize size, int screens,
                        const Prepare& prepare) {
  Computer computer;
  prepare(computer);
  QQuickWindow window;
  window.resize(size);
  window.show();
  const auto content = settingsContent(computer.simulated.host(), computer.engine(), {});
  content->attach(window);
  settle(computer);
  auto* const scroll = content->root()->findChild<QQuickItem*>("scroll");
  for (int screen = 0; screen < screens; ++screen) {
    const double end = scroll->property("contentHeight").toDouble() - scroll->height();
    scroll->setProperty("contentY", std::min(end, screen * 0.9 * scroll->height()));
    settle(computer);
    save(window.grabWindow(), folder, QStringLiteral("settings-%1-%2").arg(name).arg(screen + 1));
  }
}

}  // namespace

int main(int argc, char** argv) {
  qputenv("QT_QPA_PLATFORM", "offscreen");
  QQuickWindow::setGraphicsApi(QSGRendererInterface::Software);
  const QGuiApplication application(argc, argv);
  if (argc != 2) {
    std::fprintf(stderr, "usage: lunevra-daytime-gallery FOLDER\n");
    return 2;
  }
  const QDir folder(QGuiApplication::arguments().at(1));
  folder.mkpath(".");
  photographMenu(folder, "1-idle", [](Computer&) {});
  photographMenu(folder, "2-off", [](Computer& c) { c.engine().setEnabled(false); });
  photographMenu(folder, "3-committed", [](Computer& c) { c.commit(); });
  photographMenu(folder, "4-key", [](Computer& c) { c.configureKey(); });
  photographMenu(folder, "5-lock", [](Computer& c) { c.beginNight(); });
  const QSize full(520, 760);
  photographSettings(folder, "1-fresh", full, 3, [](Computer&) {});
  photographSettings(folder, "2-armed", full, 3, [](Computer& c) { c.armEverything(); });
  photographSettings(folder, "3-committed", full, 3, [](Computer& c) {
    c.configureKey();
    c.commit();
  });
  // The window of a display that is 768 points high.
  photographSettings(folder, "4-low-display", {520, 704}, 4, [](Computer&) {});
  photographSettings(folder, "5-unapproved", full, 3, [](Computer& c) { c.leaveUnapproved(); });
  photographPressed(folder, "6-ask-to-lock", "lockSettings", [](Computer&) {});
  photographPressed(folder, "7-ask-to-replace", "createKey", [](Computer& c) { c.configureKey(); });
  photographPressed(folder, "8-picker", "duration", [](Computer&) {});
  return 0;
}
