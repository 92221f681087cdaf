#include "platform/desktop/qt_connection.h"

#include <QGuiApplication>

#include "platform/localized_error.h"

namespace lunevra {

xcb_connection_t* qtConnection() {
  const auto* x11 = qGuiApp->nativeInterface<QNativeInterface::QX11Application>();
  if (x11 == nullptr) throw LocalizedError("Lunevra's windows need an X display.");
  return x11->connection();
}

}  // namespace lunevra
