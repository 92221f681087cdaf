#pragma once

#include <memory>

#include "platform/log.h"

class QObject;
class QQmlEngine;
class QQuickItem;

namespace lunevra {

/// A view over its bridge, by the names of its module and of itself: "Daytime/SettingsView". Null
/// should it fail to load, and one line in the log says why. Both outlive the view.
[[nodiscard]] std::unique_ptr<QQuickItem> loadView(QQmlEngine& engine, const char* name,
                                                   QObject& bridge, Log& log);

}  // namespace lunevra
