#include <algorithm>
#include <functional>
#include <gtest/gtest.h>
#include <memory>

#include <QtCore/qcoreapplication.h>
#include <QtCore/qdeadlinetimer.h>
#include <QtGui/qaccessible.h>
#include <QtGui/qevent.h>
#include <QtQuick/qquickitem.h>
#include <QtQuick/qquickwindow.h>
#include <QtTest/qtest.h>

#include "app/program.h"
#include "platform/simulated/simulated_host.h"
#include "store/settings_keys.h"
#include "ui/daytime/daytime_content.h"

namespace lunevra {
namespace {

using std::chrono_literals::operator""s;

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
  /// Whether the person can read it, scrolling included.
  bool shows(const char* text, QQuickItem* within = nullptr) {
    auto* const root = within != nullptr ? within : content->root();
    if (root->isVisible() && root->property("text") == text) return true;
    const auto children = root->childItems();
    return std::any_of(children.begin(), children.end(),
                       [&](QQuickItem* child) { return shows(text, child); });
  }
  /// The pickers of a row, from left to right.
  QList<QQuickItem*> pickers(const char* row) {
    QList<QQuickItem*> found;
    for (auto* const child : find(row)->childItems())
      for (auto* const item : child->childItems())
        if (item->property("displayText").isValid()) found.append(item);
    return found;
  }
  /// As the window system does: shortcuts are asked first.
  void type(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
    QTest::keyClick(&window, key, modifiers);
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
    const auto center = item->mapToScene(item->boundingRect().center()).toPoint();
    QTest::mouseClick(&window, Qt::LeftButton, Qt::NoModifier, center);
    settle();
  }
  void turnWheelOver(QQuickItem* item, int steps) {
    const auto center = item->mapToScene(item->boundingRect().center());
    QWheelEvent wheel(center, center, {}, {0, -120 * steps}, Qt::NoButton, Qt::NoModifier,
                      Qt::NoScrollPhase, false);
    QCoreApplication::sendEvent(&window, &wheel);
    settle();
  }
  void commitFromAnotherMachine(TimeInterval length) {
    const auto end = computer.time.now() + length;
    computer.cloud.setFromElsewhere(settings_key::lockEndDate, end.secondsSince1970);
    computer.cloud.setFromElsewhere(settings_key::lockEnabled, true);
    computer.time.pass(2s);
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
  EXPECT_EQ(computer.cloud.object(settings_key::wakeMinute), StoredValue{std::int64_t{15}});
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
  EXPECT_TRUE(shows("10:10 PM"));
  typeAt(pickers("wake")[0], Qt::Key_Down);
  typeAt(find("saveSchedule"), Qt::Key_Space);
  EXPECT_EQ(engine().schedule(), (Schedule{22, 10, 7, 0}));
}

TEST_F(DaytimeViewTest, ACommitmentIsConfirmedFirst) {
  showSettings();
  typeAt(find("duration"), Qt::Key_Down);
  typeAt(find("lockSettings"), Qt::Key_Space);
  ASSERT_NE(find("confirm"), nullptr);
  EXPECT_TRUE(find("cancel")->hasActiveFocus());
  type(Qt::Key_Return);  // the safe answer
  EXPECT_TRUE(eventually([this] { return find("confirm") == nullptr; }));
  EXPECT_TRUE(find("lockSettings")->hasActiveFocus());
  typeAt(find("lockSettings"), Qt::Key_Space);
  type(Qt::Key_Escape);
  EXPECT_TRUE(eventually([this] { return find("confirm") == nullptr; }));
  EXPECT_TRUE(window.isVisible());
  EXPECT_FALSE(engine().isLocked());

  typeAt(find("lockSettings"), Qt::Key_Space);
  click("confirm");
  EXPECT_EQ(engine().lockEndDate(), computer.calendar.addingDays(computer.time.now(), 14));
  for (auto* const control :
       {pickers("wake")[0], find("saveSchedule"), find("enableLock"), find("createKey")})
    EXPECT_FALSE(control->isEnabled()) << control->objectName().toStdString();
  EXPECT_TRUE(shows("Settings Locked"));
  EXPECT_TRUE(shows("Editable again in 14d 0h. Nightly releases still happen at 6:00 AM."));
  EXPECT_FALSE(shows("Lock Settings"));
  const auto top = find("scroll")->property("contentY").toDouble();
  type(Qt::Key_Up);
  EXPECT_LT(find("scroll")->property("contentY").toDouble(), top) << "the keyboard is not lost";
}

TEST_F(DaytimeViewTest, AConfirmationIsNotStrongerThanWhatComesMeanwhile) {
  showSettings();
  typeAt(find("lockSettings"), Qt::Key_Space);
  commitFromAnotherMachine(TimeInterval{30 * 86400.0});
  EXPECT_TRUE(shows("Settings Locked"));
  const auto end = engine().lockEndDate();
  ASSERT_NE(find("confirm"), nullptr);
  click("confirm");
  EXPECT_EQ(engine().lockEndDate(), end) << "a week is shorter";
  EXPECT_TRUE(eventually([this] { return find("confirm") == nullptr; }));
}

TEST_F(DaytimeViewTest, ADriveThatIsPulledIsNoLongerConnected) {
  SimulatedVolumes::Volume drive;
  drive.path = "/media/KEYDRIVE";
  computer.volumes.attach(drive);
  computer.openPanels.answerNextWith(drive.path);
  showSettings();
  typeAt(find("createKey"), Qt::Key_Space);
  EXPECT_TRUE(shows("CONNECTED"));
  EXPECT_TRUE(shows("Key is currently mounted — hand it to your trusted person and eject."));
  computer.volumes.eject(drive.name);
  computer.time.pass(1s);
  settle();
  EXPECT_FALSE(shows("CONNECTED"));
  EXPECT_TRUE(shows("Configured; only the exact drive can release a night early."));
}

TEST_F(DaytimeViewTest, TheKeyboardReachesEverythingInSight) {
  showSettings();
  QAccessible::setActive(true);
  const auto* const header = find("close");
  const auto* const column = find("scroll");
  std::vector<QQuickItem*> reached;
  for (type(Qt::Key_Tab); reached.empty() || window.activeFocusItem() != reached.front();
       type(Qt::Key_Tab)) {
    auto* const item = window.activeFocusItem();
    reached.push_back(item);
    ASSERT_LE(reached.size(), 15U);
    ASSERT_NE(item, nullptr);
    auto* const accessible = QAccessible::queryAccessibleInterface(item);
    ASSERT_NE(accessible, nullptr) << item->metaObject()->className();
    const auto name = accessible->text(QAccessible::Name);
    EXPECT_FALSE(name.isEmpty()) << reached.size();
    EXPECT_NE(accessible->role(), QAccessible::Client) << name.toStdString();
    EXPECT_TRUE(item->property("visualFocus").toBool()) << name.toStdString();
    const auto place = item->mapRectToItem(column, item->boundingRect());
    EXPECT_TRUE(item == header || column->boundingRect().contains(place)) << name.toStdString();
  }
  EXPECT_EQ(reached.size(), 15U);
  EXPECT_EQ(reached.front(), header);
  EXPECT_EQ(reached.back(), find("lockSettings"));
}

TEST_F(DaytimeViewTest, EscapeClosesTheInnermostAndTheWheelOnlyScrolls) {
  showSettings();
  auto* const picker = pickers("bedtime")[0];
  const auto top = [this] { return find("scroll")->property("contentY").toDouble(); };
  turnWheelOver(picker, 1);
  EXPECT_GT(top(), 0);
  type(Qt::Key_PageUp);
  EXPECT_EQ(top(), 0);
  typeAt(picker, Qt::Key_End);
  EXPECT_EQ(picker->property("displayText"), "10 PM");
  typeAt(picker, Qt::Key_Space);
  EXPECT_TRUE(picker->property("down").toBool());
  type(Qt::Key_Escape);
  EXPECT_FALSE(picker->property("down").toBool());
  EXPECT_TRUE(window.isVisible());
  EXPECT_EQ(picker->property("displayText"), "10 PM");
  type(Qt::Key_Escape);
  EXPECT_FALSE(window.isVisible());
}

TEST_F(DaytimeViewTest, ReplacingTheKeyIsConfirmedFirst) {
  computer.keychain.setItem(Bytes(32, 1));
  showSettings();
  click("createKey");
  EXPECT_FALSE(computer.openPanels.wasShown());
  ASSERT_NE(find("confirm"), nullptr);
  click("confirm");
  EXPECT_TRUE(computer.openPanels.wasShown());

  click("createKey");
  window.hide();  // as the lock does
  EXPECT_TRUE(eventually([this] { return content->root() == nullptr; }));
  window.show();
  settle();
  EXPECT_EQ(find("confirm"), nullptr);
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
  EXPECT_TRUE(shows("Scheduler protected — disable the nightly lock to quit"));
  click("quit");
  type(Qt::Key_Q, Qt::ControlModifier);
  EXPECT_EQ(quits, 0) << "protected: there is no such button";
  type(Qt::Key_Down);
  type(Qt::Key_Space);
  EXPECT_FALSE(engine().isEnabled());
  click("quit");
  type(Qt::Key_Q, Qt::ControlModifier);
  EXPECT_EQ(quits, 2);
  click("settings");
  EXPECT_EQ(settingsOpened, 1);
  EXPECT_FALSE(window.isVisible());
}

TEST_F(DaytimeViewTest, TheMenuFollowsOtherMachinesAndTheNight) {
  showMenu();
  commitFromAnotherMachine(TimeInterval{90010.0});
  EXPECT_TRUE(shows("Settings locked: 1d 1h"));
  EXPECT_FALSE(find("nightlySwitch")->isEnabled());
  type(Qt::Key_Comma, Qt::ControlModifier);
  EXPECT_EQ(settingsOpened, 1);
  window.show();
  computer.time.pass(std::chrono::hours(7));
  settle();
  EXPECT_TRUE(shows("Locked until morning"));
  EXPECT_TRUE(shows("No on-screen unlock"));
  EXPECT_FALSE(find("settings")->isEnabled());
  type(Qt::Key_Escape);
  EXPECT_FALSE(window.isVisible());
}

}  // namespace
}  // namespace lunevra
