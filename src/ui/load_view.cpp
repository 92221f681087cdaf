#include "ui/load_view.h"

#include <QtCore/qurl.h>
#include <QtCore/qvariant.h>
#include <QtQml/qqmlcomponent.h>
#include <QtQuick/qquickitem.h>

namespace lunevra {

std::unique_ptr<QQuickItem> loadView(QQmlEngine& engine, const char* name, QObject& bridge,
                                     Log& log) {
  QQmlComponent component(
      &engine, QUrl(QStringLiteral("qrc:/qt-project.org/imports/Lunevra/%1.qml").arg(name)));
  std::unique_ptr<QObject> object;
  if (component.isReady())
    object.reset(component.createWithInitialProperties({{"bridge", QVariant::fromValue(&bridge)}}));
  std::unique_ptr<QQuickItem> view(qobject_cast<QQuickItem*>(object.get()));
  if (view)
    static_cast<void>(object.release());  // now the view's
  else
    log.line("Lunevra could not load " + std::string(name) + ": " +
             component.errorString().toStdString());
  return view;
}

}  // namespace lunevra
