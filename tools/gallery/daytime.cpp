// Draws the menu and the settings window in every state, for looking at:
//   [QT_SCALE_FACTOR=1.5] lunevra-daytime-gallery FOLDER
// The states are those of a real engine on a simulated computer.

#include <cstdio>
#include <functional>
#include <string>

#include <QtCore/qdir.h>
#include <QtCore/qeventloop.h>
#include <QtCore/qmath.h>
#include <QtCore/qtimer.h>
#include <QtGui/qevent.h>
#include <QtGui/qguiapplication.h>
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
  /// A key on a drive that is plugged in; one that cannot be written to is refused.
  void createKey(bool isWritable) {
    SimulatedVolumes::Volume drive;
    drive.name = "KEYDRIVE";
    drive.path = "/media/KEYDRIVE";
    drive.isReadOnly = !isWritable;
    simulated.volumes.attach(drive);
    simulated.openPanels.answerNextWith(drive.path);
    engine().createPhysicalKey();
    simulated.time.drainMainQueue();
  }
  void commit() { engine().activateCommitmentLock(simulated.time.now() + TimeInterval{2e5}); }
  void setServices(ServiceStatus status) {
    simulated.services.agent("").setStatus(status);
    simulated.services.daemon("").setStatus(status);
  }
  void armEverything() {
    configureKey();
    setServices(ServiceStatus::enabled);
    simulated.defaults.standard().set(settings_key::firewallEnabled, true);
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

/// Pictures of another scale than 1 say so.
void save(QQuickWindow& window, const QDir& folder, const QString& name) {
  const auto scale = window.effectiveDevicePixelRatio();
  const auto suffix = scale == 1 ? QString() : QStringLiteral("@%1x").arg(scale);
  const auto file = folder.filePath(name + suffix + ".png");
  if (!window.grabWindow().save(file))
    std::fprintf(stderr, "could not write %s\n", qPrintable(file));
}

/// A descendant by its name; the names of views made of parts are those of their items.
QQuickItem* find(QQuickItem& within, const QString& name) {
  for (auto* const item : within.childItems()) {
    if (item->objectName() == name) return item;
    if (auto* const found = find(*item, name)) return found;
  }
  return nullptr;
}

/// A window that shows a prepared computer's engine.
struct Shown {
  using MakeContent = std::function<std::shared_ptr<DaytimeContent>(Computer&)>;

  Shown(const Prepare& prepare, QSize size, const MakeContent& makeContent) {
    prepare(computer);
    window.resize(size);
    window.show();
    content = makeContent(computer);
    content->attach(window);
    window.requestActivate();
    settle(computer);
  }
  QQuickItem& item(const QString& name) const { return *find(*content->root(), name); }
  void save(const QDir& folder, const QString& name) {
    settle(computer);
    ::save(window, folder, name);
  }

  Computer computer;
  QQuickWindow window;
  std::shared_ptr<DaytimeContent> content;  // goes before its window
};

std::shared_ptr<DaytimeContent> settingsOf(Computer& computer) {
  return settingsContent(computer.simulated.host(), computer.engine(), {});
}

std::shared_ptr<DaytimeContent> menuOf(Computer& computer) {
  return menuBarContent(computer.simulated.host(), computer.engine(), {}, [] {});
}

void photographMenu(const QDir& folder, const QString& name, const Prepare& prepare) {
  Shown(prepare, {}, menuOf).save(folder, "menu-" + name);
}

/// The whole column of the settings at once, in a window that is high enough, once something has
/// happened while it was shown.
void photographSettings(
    const QDir& folder, const QString& name, const Prepare& prepare,
    const Prepare& happen = [](Computer&) {}) {
  Shown shown(prepare, {520, 760}, settingsOf);
  happen(shown.computer);
  settle(shown.computer);
  const auto& scroll = shown.item("scroll");
  shown.window.resize(520, qCeil(scroll.y() + scroll.property("contentHeight").toDouble()));
  shown.save(folder, "settings-" + name);
}

/// The window in the size that it has: at the column's top, a little further, and at its end.
void photographWindow(const QDir& folder, const QString& name, int height) {
  Shown shown([](Computer&) {}, {520, height}, settingsOf);
  auto& scroll = shown.item("scroll");
  const double end = scroll.property("contentHeight").toDouble() - scroll.height();
  for (const auto& [place, y] : {std::pair("top", 0.0), {"further", 90.0}, {"end", end}}) {
    scroll.setProperty("contentY", y);
    shown.save(folder, "window-" + name + "-" + place);
  }
}

/// The window once a control of it has been pressed with the keyboard.
void photographPressed(const QDir& folder, const QString& name, const QString& control,
                       const Prepare& prepare) {
  Shown shown(prepare, {520, 760}, settingsOf);
  shown.item(control).forceActiveFocus(Qt::TabFocusReason);
  settle(shown.computer);
  for (const auto type : {QEvent::KeyPress, QEvent::KeyRelease}) {
    QKeyEvent event(type, Qt::Key_Space, Qt::NoModifier);
    QCoreApplication::sendEvent(&shown.window, &event);
  }
  shown.save(folder, "window-" + name);
}

void photographMenus(const QDir& folder) {
  photographMenu(folder, "1-enabled", [](Computer&) {});
  photographMenu(folder, "2-off", [](Computer& c) { c.engine().setEnabled(false); });
  photographMenu(folder, "3-committed", [](Computer& c) { c.commit(); });
  photographMenu(folder, "4-key-ready", [](Computer& c) { c.configureKey(); });
  photographMenu(folder, "5-lock", [](Computer& c) { c.beginNight(); });
  photographMenu(folder, "6-committed-lock-with-key", [](Computer& c) {
    c.configureKey();
    c.commit();
    c.beginNight();
  });
}

void photographColumns(const QDir& folder) {
  photographSettings(folder, "1-fresh", [](Computer&) {});
  photographSettings(folder, "2-armed", [](Computer& c) { c.armEverything(); });
  photographSettings(folder, "3-unapproved",
                     [](Computer& c) { c.setServices(ServiceStatus::requiresApproval); });
  photographSettings(
      folder, "4-key-connected", [](Computer&) {}, [](Computer& c) { c.createKey(true); });
  photographSettings(
      folder, "5-key-refused", [](Computer&) {}, [](Computer& c) { c.createKey(false); });
  photographSettings(folder, "6-committed", [](Computer& c) {
    c.configureKey();
    c.commit();
  });
  photographSettings(folder, "7-night", [](Computer& c) {
    c.engine().updateBlockStart(21, 10);  // a minute that the picker does not have
    c.beginNight();
  });
}

void photographWindows(const QDir& folder) {
  photographWindow(folder, "1-full", 760);
  photographWindow(folder, "2-low-display", 704);  // 768 points high
  photographPressed(folder, "3-ask-to-lock", "lockSettings", [](Computer&) {});
  photographPressed(folder, "4-ask-to-replace", "createKey", [](Computer& c) { c.configureKey(); });
  photographPressed(folder, "5-durations", "duration", [](Computer&) {});
  photographPressed(folder, "6-hours", "hour", [](Computer&) {});
  photographPressed(folder, "7-minutes", "minute", [](Computer&) {});
  photographPressed(folder, "8-switched-off", "enableLock", [](Computer&) {});
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
  photographMenus(folder);
  photographColumns(folder);
  photographWindows(folder);
  return 0;
}
