#include "platform/desktop/status_notifier_item.h"

#include <functional>
#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QDBusArgument>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCall>
#include <QDBusVirtualObject>
#include <QDeadlineTimer>
#include <QProcess>

#include "platform/desktop/tray_menu.h"

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

TEST(StatusNotifierItem, IsInEveryTrayThatComesAndIsPressed) {
  QImage icon(22, 22, QImage::Format_ARGB32);
  icon.fill(QColor(0x11, 0x22, 0x33, 0x44));
  StatusNotifierItem item("Lunevra", {icon});
  QPoint pressed;
  item.onActivate = [&](int x, int y) { pressed = {x, y}; };
  item.setToolTip("Blocks at 10:00 PM.");
  TrayMenu menu;
  menu.setEntries({{}, {.label = "Quit"}});
  int chosen = -1;
  menu.onOpening = [&] { menu.setEntries({{}, {.label = "Enable nightly lock"}}); };
  menu.onChosen = [&](int place) { chosen = place; };
  const auto address = qEnvironmentVariable("DBUS_SESSION_BUS_ADDRESS");

  for (int desktop = 0; desktop < 2; ++desktop) {
    Tray tray(address);
    ASSERT_TRUE(eventually([&] { return !tray.items.isEmpty(); })) << desktop;
    const auto all = tray.ask("org.freedesktop.DBus.Properties", "GetAll",
                              {QString("org.kde.StatusNotifierItem")});
    ASSERT_EQ(all.type(), QDBusMessage::ReplyMessage) << all.errorMessage().toStdString();
    const auto properties = qdbus_cast<QVariantMap>(all.arguments().first());
    EXPECT_EQ(properties["Title"], "Lunevra");
    EXPECT_EQ(properties["Status"], "Active");
    EXPECT_EQ(properties["IconPixmap"].value<QDBusArgument>().currentSignature(), "a(iiay)");
    EXPECT_EQ(properties["ToolTip"].value<QDBusArgument>().currentSignature(), "(sa(iiay)ss)");
    const auto askMenu = [&](const QString& member, const QVariantList& arguments) {
      const auto path = properties["Menu"].value<QDBusObjectPath>().path();
      return tray.ask("com.canonical.dbusmenu", member, arguments, path);
    };
    EXPECT_EQ(askMenu("GetLayout", {0, -1, QStringList()}).signature(), "u(ia{sv}av)");
    askMenu("AboutToShow", {0});
    const auto label = askMenu("GetProperty", {2, "label"}).arguments().value(0);
    EXPECT_EQ(label.value<QDBusVariant>().variant(), "Enable nightly lock");
    chosen = -1;
    askMenu("Event", {2, "clicked", QVariant::fromValue(QDBusVariant("")), 0U});
    EXPECT_EQ(chosen, 1);
    pressed = {};
    tray.ask("org.kde.StatusNotifierItem", "Activate", {1200, 10 + desktop});
    EXPECT_TRUE(eventually([&] { return pressed == QPoint(1200, 10 + desktop); }));
  }
}

}  // namespace
}  // namespace lunevra

int main(int argc, char** argv) {
  testing::InitGoogleTest(&argc, argv);
  QProcess bus;
  bus.start("dbus-daemon", {"--session", "--nofork", "--print-address"});
  if (!bus.waitForStarted() || !bus.waitForReadyRead()) return 1;
  qputenv("DBUS_SESSION_BUS_ADDRESS", bus.readLine().trimmed());
  const QCoreApplication application(argc, argv);
  const int result = RUN_ALL_TESTS();
  bus.kill();
  bus.waitForFinished();
  return result;
}
