#pragma once

#include <QDBusConnection>
#include <QDBusMessage>
#include <QVariantMap>

namespace lunevra {

/// Answers what was asked of an object's properties; false where it was something else.
inline bool answerAboutProperties(const QVariantMap& all, const QDBusMessage& message,
                                  const QDBusConnection& connection) {
  if (message.interface() != QLatin1String("org.freedesktop.DBus.Properties")) return false;
  if (message.member() == "GetAll") return connection.send(message.createReply(QVariant(all)));
  if (message.member() != "Get") return false;
  const auto value = all.value(message.arguments().value(1).toString());
  if (!value.isValid()) return false;
  return connection.send(message.createReply(QVariant::fromValue(QDBusVariant(value))));
}

}  // namespace lunevra
