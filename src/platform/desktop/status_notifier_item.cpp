#include "platform/desktop/status_notifier_item.h"

#include <algorithm>
#include <array>

#include <QDBusMetaType>
#include <QDBusObjectPath>
#include <QDBusServiceWatcher>
#include <QDBusVirtualObject>
#include <QtEndian>

#include "platform/desktop/bus_properties.h"
#include "platform/desktop/tray_menu.h"

namespace lunevra {
namespace {

const QString watcherService = QStringLiteral("org.kde.StatusNotifierWatcher");
const QString itemInterface = QStringLiteral("org.kde.StatusNotifierItem");
const QString itemPath = QStringLiteral("/StatusNotifierItem");

constexpr auto introspection = R"xml(
<interface name="org.kde.StatusNotifierItem">
  <property name="Category" type="s" access="read"/>
  <property name="Id" type="s" access="read"/>
  <property name="Title" type="s" access="read"/>
  <property name="Status" type="s" access="read"/>
  <property name="IconName" type="s" access="read"/>
  <property name="IconPixmap" type="a(iiay)" access="read"/>
  <property name="ToolTip" type="(sa(iiay)ss)" access="read"/>
  <property name="ItemIsMenu" type="b" access="read"/>
  <property name="Menu" type="o" access="read"/>
  <method name="Activate"><arg type="i" direction="in"/><arg type="i" direction="in"/></method>
  <method name="ContextMenu"><arg type="i" direction="in"/><arg type="i" direction="in"/></method>
  <method name="SecondaryActivate"><arg type="i" direction="in"/><arg type="i" direction="in"/></method>
  <method name="Scroll"><arg type="i" direction="in"/><arg type="s" direction="in"/></method>
  <signal name="NewToolTip"/>
</interface>
)xml";

}  // namespace

/// A picture as trays want it: 32 bits a pixel, most significant byte first.
struct IconPixmap {
  int width = 0;
  int height = 0;
  QByteArray pixels;
};

struct ItemToolTip {
  QString iconName;
  QList<IconPixmap> icon;
  QString title;
  QString text;
};

static QDBusArgument& operator<<(QDBusArgument& argument, const IconPixmap& icon) {
  argument.beginStructure();
  argument << icon.width << icon.height << icon.pixels;
  argument.endStructure();
  return argument;
}

static const QDBusArgument& operator>>(const QDBusArgument& argument, IconPixmap& icon) {
  argument.beginStructure();
  argument >> icon.width >> icon.height >> icon.pixels;
  argument.endStructure();
  return argument;
}

static QDBusArgument& operator<<(QDBusArgument& argument, const ItemToolTip& tip) {
  argument.beginStructure();
  argument << tip.iconName << tip.icon << tip.title << tip.text;
  argument.endStructure();
  return argument;
}

static const QDBusArgument& operator>>(const QDBusArgument& argument, ItemToolTip& tip) {
  argument.beginStructure();
  argument >> tip.iconName >> tip.icon >> tip.title >> tip.text;
  argument.endStructure();
  return argument;
}

}  // namespace lunevra

Q_DECLARE_METATYPE(lunevra::IconPixmap)
Q_DECLARE_METATYPE(lunevra::ItemToolTip)

namespace lunevra {

/// Answers what trays ask on the bus.
class StatusNotifierItem::Server : public QDBusVirtualObject {
 public:
  Server(StatusNotifierItem& item, const QString& title, const QList<QImage>& icon);
  ~Server() override { bus_.unregisterObject(itemPath); }
  Server(const Server&) = delete;
  Server& operator=(const Server&) = delete;

  void setToolTip(const QString& text);
  [[nodiscard]] QString introspect(const QString&) const override { return introspection; }
  bool handleMessage(const QDBusMessage& message, const QDBusConnection& connection) override;

 private:
  void registerWithTray();
  bool handleCall(const QDBusMessage& message, const QDBusConnection& connection);
  [[nodiscard]] QVariantMap properties() const;

  StatusNotifierItem& item_;
  QDBusConnection bus_ = QDBusConnection::sessionBus();
  QString title_;
  QList<IconPixmap> icon_;
  QString toolTip_;
  QDBusServiceWatcher trays_;
};

StatusNotifierItem::Server::Server(StatusNotifierItem& item, const QString& title,
                                   const QList<QImage>& icon)
    : item_(item), title_(title) {
  qDBusRegisterMetaType<IconPixmap>();
  qDBusRegisterMetaType<QList<IconPixmap>>();
  qDBusRegisterMetaType<ItemToolTip>();
  for (const auto& image : icon) {
    const auto picture = image.convertToFormat(QImage::Format_ARGB32);
    QByteArray pixels(picture.sizeInBytes(), Qt::Uninitialized);
    qToBigEndian<quint32>(picture.constBits(), picture.sizeInBytes() / 4, pixels.data());
    icon_.append({picture.width(), picture.height(), pixels});
  }
  if (!bus_.isConnected()) return;
  bus_.registerVirtualObject(itemPath, this, QDBusConnection::SingleNode);
  trays_.setConnection(bus_);
  trays_.setWatchMode(QDBusServiceWatcher::WatchForRegistration);
  trays_.addWatchedService(watcherService);
  connect(&trays_, &QDBusServiceWatcher::serviceRegistered, this, [this] { registerWithTray(); });
  registerWithTray();
}

// Nobody waits for the answer: where there is no tray yet, its arrival is what counts.
void StatusNotifierItem::Server::registerWithTray() {
  auto call =
      QDBusMessage::createMethodCall(watcherService, QStringLiteral("/StatusNotifierWatcher"),
                                     watcherService, "RegisterStatusNotifierItem");
  call << bus_.baseService();
  call.setAutoStartService(false);
  bus_.send(call);
}

void StatusNotifierItem::Server::setToolTip(const QString& text) {
  if (toolTip_ == text) return;
  toolTip_ = text;
  bus_.send(QDBusMessage::createSignal(itemPath, itemInterface, "NewToolTip"));
}

QVariantMap StatusNotifierItem::Server::properties() const {
  return {{"Category", "SystemServices"},
          {"Id", "lunevra"},
          {"Title", title_},
          {"Status", "Active"},
          {"IconName", ""},
          {"IconPixmap", QVariant::fromValue(icon_)},
          {"ToolTip", QVariant::fromValue(ItemToolTip{{}, {}, title_, toolTip_})},
          {"ItemIsMenu", false},
          {"Menu", QVariant::fromValue(QDBusObjectPath(TrayMenu::objectPath()))}};
}

bool StatusNotifierItem::Server::handleMessage(const QDBusMessage& message,
                                               const QDBusConnection& connection) {
  if (message.interface() == itemInterface || message.interface().isEmpty())
    return handleCall(message, connection);
  return answerAboutProperties(properties(), message, connection);
}

bool StatusNotifierItem::Server::handleCall(const QDBusMessage& message,
                                            const QDBusConnection& connection) {
  static const std::array presses{QStringLiteral("Activate"), QStringLiteral("ContextMenu"),
                                  QStringLiteral("SecondaryActivate")};
  const auto member = message.member();
  const bool isPress = std::find(presses.begin(), presses.end(), member) != presses.end();
  if (!isPress && member != "Scroll") return false;
  connection.send(message.createReply());
  const auto place = message.arguments();
  if (isPress && place.size() == 2 && item_.onActivate)
    item_.onActivate(place[0].toInt(), place[1].toInt());
  return true;
}

StatusNotifierItem::StatusNotifierItem(const QString& title, const QList<QImage>& icon)
    : server_(std::make_unique<Server>(*this, title, icon)) {}

StatusNotifierItem::~StatusNotifierItem() = default;

void StatusNotifierItem::setToolTip(const QString& text) {
  server_->setToolTip(text);
}

}  // namespace lunevra
