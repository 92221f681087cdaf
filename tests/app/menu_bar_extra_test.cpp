#include "app/menu_bar_extra.h"

#include <functional>
#include <gtest/gtest.h>

#include <QDBusArgument>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCall>
#include <QDBusVirtualObject>
#include <QDeadlineTimer>
#include <QGuiApplication>
#include <QProcess>

#include "app/program.h"
#include "platform/simulated/simulated_host.h"

namespace lunevra {
namespace {

bool eventually(const std::function<bool()>& condition) {
  const QDeadlineTimer deadline(10000);
  while (!condition()) {
    if (deadline.hasExpired()) return false;
    QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents, 20);
  }
  return true;
}

/// A desktop's tray on a bus connection of its own.
class Tray : public QDBusVirtualObject {
 public:
  explicit Tray(const QString& address) : bus_(QDBusConnection::connectToBus(address, "tray")) {
    bus_.registerVirtualObject("/StatusNotifierWatcher", this);
    bus_.registerService("org.kde.StatusNotifierWatcher");
  }
  ~Tray() override {
    bus_.unregisterService("org.kde.StatusNotifierWatcher");
    QDBusConnection::disconnectFromBus("tray");
  }
  Tray(const Tray&) = delete;
  Tray& operator=(const Tray&) = delete;

  [[nodiscard]] QString introspect(const QString&) const override { return {}; }
  bool handleMessage(const QDBusMessage& message, const QDBusConnection& connection) override {
    if (message.member() == "RegisterStatusNotifierItem") items.append(message.service());
    return connection.send(message.createReply());
  }
  QDBusMessage ask(const QString& interface, const QString& member, const QVariantList& arguments,
                   const QString& path = "/StatusNotifierItem") {
    auto call = QDBusMessage::createMethodCall(items.last(), path, interface, member);
    call.setArguments(arguments);
    const auto pending = bus_.asyncCall(call);
    eventually([&] { return pending.isFinished(); });
    return pending.reply();
  }

  QStringList items;

 private:
  QDBusConnection bus_;
};

/// What another program is shown and does.
class MenuBarExtraTest : public testing::Test {
 protected:
  MenuBarExtraTest() {
    computer.time.setWallClock(
        *computer.calendar.instant({.year = 2026, .month = 3, .day = 14, .hour = 15}));
  }
  /// The places of the menus that are open.
  std::vector<double> menus() {
    std::vector<double> tops;
    for (const auto& window : computer.application.windows())
      if (dynamic_cast<const SimulatedWindow&>(*window).level() == WindowLevel::popUpMenu)
        tops.push_back(window->frame().y);
    return tops;
  }

  SimulatedHost computer;
  SceneContentFactory nothing = [](ShutdownManager&, const SceneActions&) { return nullptr; };
  Program program{computer.host(), computer.desktop(), [](ShutdownManager&) { return nullptr; },
                  DaytimeContents{.settings = nothing, .menu = nothing}};
};

TEST_F(MenuBarExtraTest, IsInEveryTrayThatComesAndDoesWhatItsRowsSay) {
  const auto& engine = program.app().shutdownManager();
  const MenuBarExtra extra(program.app(), computer.time);
  for (const bool isEnabled : {true, false}) {
    Tray tray(qEnvironmentVariable("DBUS_SESSION_BUS_ADDRESS"));
    ASSERT_TRUE(eventually([&] { return !tray.items.isEmpty(); })) << isEnabled;
    const auto all = tray.ask("org.freedesktop.DBus.Properties", "GetAll",
                              {QString("org.kde.StatusNotifierItem")});
    ASSERT_EQ(all.type(), QDBusMessage::ReplyMessage) << all.errorMessage().toStdString();
    const auto properties = qdbus_cast<QVariantMap>(all.arguments().first());
    EXPECT_EQ(properties["Title"], "Lunevra");
    EXPECT_EQ(properties["Status"], "Active");
    EXPECT_EQ(properties["IconPixmap"].value<QDBusArgument>().currentSignature(), "a(iiay)");
    EXPECT_EQ(properties["ToolTip"].value<QDBusArgument>().currentSignature(), "(sa(iiay)ss)");
    const double top = isEnabled ? 10 : 20;
    tray.ask("org.kde.StatusNotifierItem", "Activate", {1200, int(top)});
    EXPECT_EQ(menus(), std::vector{top});

    const auto askMenu = [&](const QString& member, const QVariantList& arguments) {
      const auto path = properties["Menu"].value<QDBusObjectPath>().path();
      return tray.ask("com.canonical.dbusmenu", member, arguments, path);
    };
    const auto property = [&](MenuItem row, const char* name) {
      const auto answer = askMenu("GetProperty", {int(row) + 1, name}).arguments().value(0);
      return answer.value<QDBusVariant>().variant();
    };
    EXPECT_EQ(askMenu("GetLayout", {0, -1, QStringList()}).signature(), "u(ia{sv}av)");
    EXPECT_EQ(property(MenuItem::bedtime, "label"), "Blocks at 10:00 PM");
    EXPECT_EQ(property(MenuItem::bedtime, "enabled"), false);
    EXPECT_EQ(property(MenuItem::commitment, "visible"), false);
    EXPECT_EQ(property(MenuItem::nightlySwitch, "toggle-state"), int(isEnabled));
    EXPECT_EQ(property(MenuItem::quit, "enabled"), !isEnabled);
    askMenu("Event", {int(MenuItem::nightlySwitch) + 1, "clicked",
                      QVariant::fromValue(QDBusVariant("")), 0U});
    EXPECT_EQ(engine.isEnabled(), !isEnabled);
    askMenu("AboutToShow", {0});
  }
}

}  // namespace
}  // namespace lunevra

int main(int argc, char** argv) {
  qputenv("QT_QPA_PLATFORM", "offscreen");
  testing::InitGoogleTest(&argc, argv);
  QProcess bus;
  bus.start("dbus-daemon", {"--session", "--nofork", "--print-address"});
  if (!bus.waitForStarted() || !bus.waitForReadyRead()) return 1;
  qputenv("DBUS_SESSION_BUS_ADDRESS", bus.readLine().trimmed());
  const QGuiApplication application(argc, argv);
  const int result = RUN_ALL_TESTS();
  bus.kill();
  bus.waitForFinished();
  return result;
}
