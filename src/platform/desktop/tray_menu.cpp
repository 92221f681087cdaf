#include "platform/desktop/tray_menu.h"

#include <QDBusArgument>
#include <QDBusMetaType>
#include <QDBusVirtualObject>

#include "platform/desktop/bus_properties.h"

namespace lunevra {
namespace {

const QString menuInterface = QStringLiteral("com.canonical.dbusmenu");

constexpr auto introspection = R"xml(
<interface name="com.canonical.dbusmenu">
  <property name="Version" type="u" access="read"/>
  <property name="TextDirection" type="s" access="read"/>
  <property name="Status" type="s" access="read"/>
  <property name="IconThemePath" type="as" access="read"/>
  <method name="GetLayout">
    <arg type="i" direction="in"/><arg type="i" direction="in"/><arg type="as" direction="in"/>
    <arg type="u" direction="out"/><arg type="(ia{sv}av)" direction="out"/>
  </method>
  <method name="GetGroupProperties">
    <arg type="ai" direction="in"/><arg type="as" direction="in"/>
    <arg type="a(ia{sv})" direction="out"/>
  </method>
  <method name="GetProperty">
    <arg type="i" direction="in"/><arg type="s" direction="in"/><arg type="v" direction="out"/>
  </method>
  <method name="Event">
    <arg type="i" direction="in"/><arg type="s" direction="in"/>
    <arg type="v" direction="in"/><arg type="u" direction="in"/>
  </method>
  <method name="AboutToShow">
    <arg type="i" direction="in"/><arg type="b" direction="out"/>
  </method>
  <signal name="ItemsPropertiesUpdated">
    <arg type="a(ia{sv})"/><arg type="a(ias)"/>
  </signal>
  <signal name="LayoutUpdated"><arg type="u"/><arg type="i"/></signal>
</interface>
)xml";

constexpr int rootId = 0;  // the entries follow it

QVariantMap propertiesOf(const TrayMenu::Entry& entry) {
  QVariantMap properties{{"visible", entry.isShown}};
  if (entry.label.isEmpty()) {
    properties.insert("type", "separator");
    return properties;
  }
  properties.insert("label", entry.label);
  properties.insert("enabled", entry.isEnabled);
  if (!entry.isChecked) return properties;
  properties.insert("toggle-type", "checkmark");
  properties.insert("toggle-state", *entry.isChecked ? 1 : 0);
  return properties;
}

}  // namespace

/// An entry as it is sent, and one with those below it.
struct SentEntry {
  int id = rootId;
  QVariantMap properties;
};

struct SentLayout {
  int id = rootId;
  QVariantMap properties;
  QVariantList children;
};

struct ForgottenProperties {
  int id = rootId;
  QStringList names;
};

static QDBusArgument& operator<<(QDBusArgument& argument, const SentEntry& entry) {
  argument.beginStructure();
  argument << entry.id << entry.properties;
  argument.endStructure();
  return argument;
}

static const QDBusArgument& operator>>(const QDBusArgument& argument, SentEntry& entry) {
  argument.beginStructure();
  argument >> entry.id >> entry.properties;
  argument.endStructure();
  return argument;
}

static QDBusArgument& operator<<(QDBusArgument& argument, const SentLayout& layout) {
  argument.beginStructure();
  argument << layout.id << layout.properties << layout.children;
  argument.endStructure();
  return argument;
}

static const QDBusArgument& operator>>(const QDBusArgument& argument, SentLayout& layout) {
  argument.beginStructure();
  argument >> layout.id >> layout.properties >> layout.children;
  argument.endStructure();
  return argument;
}

static QDBusArgument& operator<<(QDBusArgument& argument, const ForgottenProperties& forgotten) {
  argument.beginStructure();
  argument << forgotten.id << forgotten.names;
  argument.endStructure();
  return argument;
}

static const QDBusArgument& operator>>(const QDBusArgument& argument,
                                       ForgottenProperties& forgotten) {
  argument.beginStructure();
  argument >> forgotten.id >> forgotten.names;
  argument.endStructure();
  return argument;
}

}  // namespace lunevra

Q_DECLARE_METATYPE(lunevra::SentEntry)
Q_DECLARE_METATYPE(lunevra::SentLayout)
Q_DECLARE_METATYPE(lunevra::ForgottenProperties)

namespace lunevra {

/// Answers what trays ask on the bus.
class TrayMenu::Server : public QDBusVirtualObject {
 public:
  explicit Server(TrayMenu& menu);
  ~Server() override { bus_.unregisterObject(objectPath()); }
  Server(const Server&) = delete;
  Server& operator=(const Server&) = delete;

  void setEntries(const QList<Entry>& entries);
  [[nodiscard]] QString introspect(const QString&) const override { return introspection; }
  bool handleMessage(const QDBusMessage& message, const QDBusConnection& connection) override;

 private:
  [[nodiscard]] std::optional<QVariantList> answerTo(const QDBusMessage& message) const;
  [[nodiscard]] QVariantMap properties(int id) const;
  [[nodiscard]] SentLayout layout(int id) const;
  [[nodiscard]] QList<SentEntry> group(const QList<int>& ids) const;

  TrayMenu& menu_;
  QDBusConnection bus_ = QDBusConnection::sessionBus();
  QList<Entry> entries_;
};

TrayMenu::Server::Server(TrayMenu& menu) : menu_(menu) {
  qDBusRegisterMetaType<SentEntry>();
  qDBusRegisterMetaType<QList<SentEntry>>();
  qDBusRegisterMetaType<SentLayout>();
  qDBusRegisterMetaType<ForgottenProperties>();
  qDBusRegisterMetaType<QList<ForgottenProperties>>();
  if (bus_.isConnected())
    bus_.registerVirtualObject(objectPath(), this, QDBusConnection::SingleNode);
}

void TrayMenu::Server::setEntries(const QList<Entry>& entries) {
  QList<SentEntry> changed;
  for (qsizetype i = 0; i < entries_.size(); ++i)
    if (entries[i] != entries_[i]) changed.append({int(i) + 1, propertiesOf(entries[i])});
  entries_ = entries;
  if (changed.isEmpty()) return;
  auto news = QDBusMessage::createSignal(objectPath(), menuInterface, "ItemsPropertiesUpdated");
  news << QVariant::fromValue(changed) << QVariant::fromValue(QList<ForgottenProperties>());
  bus_.send(news);
}

QVariantMap TrayMenu::Server::properties(int id) const {
  if (id == rootId) return {{"children-display", "submenu"}};
  return id > 0 && id <= entries_.size() ? propertiesOf(entries_[id - 1]) : QVariantMap();
}

SentLayout TrayMenu::Server::layout(int id) const {
  SentLayout layout{id, properties(id), {}};
  if (id != rootId) return layout;
  for (int entry = 1; entry <= entries_.size(); ++entry)
    layout.children.append(QVariant::fromValue(SentLayout{entry, properties(entry), {}}));
  return layout;
}

QList<SentEntry> TrayMenu::Server::group(const QList<int>& ids) const {
  QList<SentEntry> entries;
  for (const int id : ids) entries.append({id, properties(id)});
  return entries;
}

std::optional<QVariantList> TrayMenu::Server::answerTo(const QDBusMessage& message) const {
  const auto arguments = message.arguments();
  const int id = arguments.value(0).toInt();
  const auto member = message.member();
  if (member == "GetLayout") return QVariantList{1U, QVariant::fromValue(layout(id))};
  if (member == "GetGroupProperties")
    return QVariantList{QVariant::fromValue(group(qdbus_cast<QList<int>>(arguments.value(0))))};
  if (member == "GetProperty") {
    const auto value = properties(id).value(arguments.value(1).toString());
    return QVariantList{QVariant::fromValue(QDBusVariant(value.isValid() ? value : ""))};
  }
  if (member == "AboutToShow") return QVariantList{false};  // what has changed was sent
  if (member == "Event") return QVariantList{};
  return std::nullopt;
}

bool TrayMenu::Server::handleMessage(const QDBusMessage& message,
                                     const QDBusConnection& connection) {
  static const QVariantMap about{{"Version", 3U},
                                 {"TextDirection", "ltr"},
                                 {"Status", "normal"},
                                 {"IconThemePath", QStringList()}};
  if (message.interface() != menuInterface)
    return answerAboutProperties(about, message, connection);
  if (message.member() == "AboutToShow" && menu_.onOpening) menu_.onOpening();
  const auto answer = answerTo(message);
  if (!answer) return false;
  connection.send(message.createReply(*answer));
  const auto arguments = message.arguments();
  const int place = arguments.value(0).toInt() - 1;
  const bool isChoice = message.member() == "Event" && arguments.value(1) == "clicked";
  if (isChoice && place >= 0 && place < entries_.size() && menu_.onChosen) menu_.onChosen(place);
  return true;
}

QString TrayMenu::objectPath() {
  return QStringLiteral("/StatusNotifierItem/Menu");
}

TrayMenu::TrayMenu() : server_(std::make_unique<Server>(*this)) {}
TrayMenu::~TrayMenu() = default;

void TrayMenu::setEntries(const QList<Entry>& entries) {
  server_->setEntries(entries);
}

}  // namespace lunevra
