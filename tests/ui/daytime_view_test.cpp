#include <functional>
#include <gtest/gtest.h>
#include <memory>

#include <QtCore/qcoreapplication.h>
#include <QtCore/qdeadlinetimer.h>
#include <QtGui/qevent.h>
#include <QtGui/qguiapplication.h>
#include <QtQuick/qquickitem.h>
#include <QtQuick/qquickwindow.h>

#include "app/program.h"
#include "platform/simulated/simulated_host.h"
#include "ui/daytime/daytime_content.h"

namespace lunevra {
namespace {

void failOnWarning(QtMsgType type, const QMessageLogContext&, const QString& text) {
  if (type == QtDebugMsg || type == QtInfoMsg || text.contains("XDG_RUNTIME_DIR")) return;
  ADD_FAILURE() << text.toStdString();
}

class DaytimeViewTest : public testing::Test {
 protected:
  DaytimeViewTest() {
    computer.time.setWallClock(
        *computer.calendar.instant({.year = 2026, .month = 3, .day = 14, .hour = 15, .minute = 0}));
  }
  ShutdownManager& engine() { return program.app().shutdownManager(); }

  void showSettings() {
    show(settingsContent(computer.host(), engine(), [this] { window.hide(); }), {520, 760});
  }
  void showMenu() {
    show(menuBarContent(
             computer.host(), engine(),
             {.openSettings = [this] { ++settingsOpened; }, .terminate = [this] { ++quits; }},
             [this] { window.hide(); }),
         {250, 10});
  }
  void settle() {
    computer.time.drainMainQueue();
    QCoreApplication::processEvents();
    computer.time.drainMainQueue();
  }
  bool eventually(const std::function<bool()>& condition) {
    const QDeadlineTimer deadline(10000);
    while (!condition()) {
      if (deadline.hasExpired()) return false;
      settle();
      QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents, 10);
    }
    return true;
  }

  QQuickItem* find(const char* name, QQuickItem* within = nullptr) {
    auto* const root = within != nullptr ? within : content->root();
    for (auto* const item : root->childItems()) {
      if (item->objectName() == name) return item;
      if (auto* const found = find(name, item)) return found;
    }
    return nullptr;
  }
  /// The pickers of a row, from left to right.
  QList<QQuickItem*> pickers(const char* row) {
    QList<QQuickItem*> found;
    for (auto* const child : find(row)->childItems())
      for (auto* const item : child->childItems())
        if (item->property("displayText").isValid()) found.append(item);
    return found;
  }
  void type(Qt::Key key) {
    QKeyEvent press(QEvent::KeyPress, key, Qt::NoModifier);
    QKeyEvent release(QEvent::KeyRelease, key, Qt::NoModifier);
    QCoreApplication::sendEvent(&window, &press);
    QCoreApplication::sendEvent(&window, &release);
    settle();
  }
  void typeAt(QQuickItem* item, Qt::Key key) {
    ASSERT_NE(item, nullptr);
    item->forceActiveFocus(Qt::TabFocusReason);
    type(key);
  }
  void click(const char* name) {
    auto* const item = find(name);
    ASSERT_NE(item, nullptr) << name;
    const auto place = item->mapToScene(QPointF(item->width() / 2, item->height() / 2));
    const auto send = [&](QEvent::Type type, Qt::MouseButtons buttons) {
      QMouseEvent event(type, place, place, Qt::LeftButton, buttons, Qt::NoModifier);
      QCoreApplication::sendEvent(&window, &event);
    };
    send(QEvent::MouseButtonPress, Qt::LeftButton);
    send(QEvent::MouseButtonRelease, Qt::NoButton);
    settle();
  }

  SimulatedHost computer;
  Program program{computer.host(), computer.desktop(), [](ShutdownManager&) { return nullptr; }};
  int settingsOpened = 0;
  int quits = 0;
  QQuickWindow window;
  std::shared_ptr<DaytimeContent> content;  // goes before its window

 private:
  void show(std::shared_ptr<DaytimeContent> view, QSize size) {
    content = std::move(view);
    window.resize(size);
    window.show();
    content->attach(window);
    window.requestActivate();
    ASSERT_NE(content->root(), nullptr);
    ASSERT_TRUE(eventually([this] { return window.isActive(); }));
  }
};

TEST_F(DaytimeViewTest, PickedTimesReachTheEngineWhenTheyAreSaved) {
  showSettings();
  EXPECT_EQ(pickers("wake")[0]->property("displayText"), "6 AM");
  typeAt(pickers("wake")[0], Qt::Key_Down);
  typeAt(pickers("wake")[1], Qt::Key_Down);
  EXPECT_EQ(engine().schedule(), Schedule{});
  typeAt(find("saveSchedule"), Qt::Key_Space);
  EXPECT_EQ(engine().schedule(), (Schedule{22, 0, 7, 15}));
}

TEST_F(DaytimeViewTest, ClosingDiscardsWhatWasPicked) {
  showSettings();
  typeAt(pickers("bedtime")[0], Qt::Key_Up);
  EXPECT_EQ(pickers("bedtime")[0]->property("displayText"), "9 PM");
  click("close");
  EXPECT_FALSE(window.isVisible());
  EXPECT_TRUE(eventually([this] { return content->root() == nullptr; }));
  window.show();
  settle();
  EXPECT_EQ(pickers("bedtime")[0]->property("displayText"), "10 PM");
}

TEST_F(DaytimeViewTest, AMinuteThatThePickerDoesNotHaveMatchesNone) {
  engine().updateBlockStart(22, 10);
  showSettings();
  EXPECT_EQ(pickers("bedtime")[1]->property("displayText"), "");
}

TEST_F(DaytimeViewTest, ACommitmentIsConfirmedFirst) {
  showSettings();
  typeAt(find("duration"), Qt::Key_Down);
  typeAt(find("lockSettings"), Qt::Key_Space);
  ASSERT_NE(find("confirm"), nullptr);
  EXPECT_TRUE(find("cancel")->hasActiveFocus());
  type(Qt::Key_Return);  // the safe answer
  EXPECT_TRUE(eventually([this] { return find("confirm") == nullptr; }));
  typeAt(find("lockSettings"), Qt::Key_Space);
  type(Qt::Key_Escape);
  EXPECT_TRUE(eventually([this] { return find("confirm") == nullptr; }));
  EXPECT_TRUE(window.isVisible());
  EXPECT_FALSE(engine().isLocked());

  typeAt(find("lockSettings"), Qt::Key_Space);
  click("confirm");
  EXPECT_EQ(engine().lockEndDate(), computer.calendar.addingDays(computer.time.now(), 14));
  EXPECT_FALSE(find("enableLock")->isEnabled());
  EXPECT_FALSE(pickers("wake")[0]->isEnabled());
}

TEST_F(DaytimeViewTest, ReplacingTheKeyIsConfirmedFirst) {
  computer.keychain.setItem(Bytes(32, 1));
  showSettings();
  click("createKey");
  EXPECT_FALSE(computer.openPanels.wasShown());
  ASSERT_NE(find("confirm"), nullptr);
  click("confirm");
  EXPECT_TRUE(computer.openPanels.wasShown());
}

TEST_F(DaytimeViewTest, SwitchesReachWhatTheySwitch) {
  showSettings();
  typeAt(find("enableLock"), Qt::Key_Space);
  EXPECT_FALSE(engine().isEnabled());
  typeAt(find("firewall"), Qt::Key_Space);
  EXPECT_EQ(computer.defaults.standard().flag("Lunevra.firewallEnabled"), true);
}

TEST_F(DaytimeViewTest, TheMenuSwitchesOpensAndQuits) {
  showMenu();
  EXPECT_EQ(window.width(), 250);
  click("quit");
  EXPECT_EQ(quits, 0) << "protected: there is no such button";
  click("nightlySwitch");
  EXPECT_FALSE(engine().isEnabled());
  click("quit");
  EXPECT_EQ(quits, 1);
  click("settings");
  EXPECT_EQ(settingsOpened, 1);
  EXPECT_FALSE(window.isVisible());
}

}  // namespace
}  // namespace lunevra

int main(int argc, char** argv) {
  qputenv("QT_QPA_PLATFORM", "offscreen");
  QQuickWindow::setGraphicsApi(QSGRendererInterface::Software);
  testing::InitGoogleTest(&argc, argv);
  const QGuiApplication application(argc, argv);
  qInstallMessageHandler(lunevra::failOnWarning);
  return RUN_ALL_TESTS();
}
