#include "ui/lock_screen/lock_screen_content.h"

#include <utility>

#include <QtQml/qqmlengine.h>
#include <QtQuick/qquickitem.h>
#include <QtQuick/qquickwindow.h>

#include "ui/load_view.h"
#include "ui/lock_screen/lock_screen_bridge.h"

// Named here so that the linker keeps what registers the module's types.
void qml_register_types_Lunevra_LockScreen();

namespace lunevra {

std::shared_ptr<QQmlEngine> SharedQmlEngine::get() {
  if (auto engine = engine_.lock()) return engine;
  qml_register_types_Lunevra_LockScreen();
  auto engine = std::make_shared<QQmlEngine>();
  engine_ = engine;
  return engine;
}

LockScreenContent::LockScreenContent(const Host& host, RunLoop& ticks, ShutdownManager& engine,
                                     std::shared_ptr<SharedQmlEngine> views)
    : host_(host), ticks_(ticks), shutdownManager_(engine), views_(std::move(views)) {}

LockScreenContent::~LockScreenContent() = default;

void LockScreenContent::attach(QQuickWindow& window) {
  window.setColor(Qt::black);
  engine_ = views_->get();
  bridge_ = std::make_unique<LockScreenBridge>(host_, ticks_, shutdownManager_);
  root_ = loadView(*engine_, "LockScreen/ContentView", *bridge_, host_.log);
  if (root_) keepSizedTo(window);
}

void LockScreenContent::keepSizedTo(QQuickWindow& window) {
  const auto resize = [this, &window] { root_->setSize(QSizeF(window.size())); };
  const auto updateDrawn = [this, &window] { bridge_->model().setDrawn(window.isVisible()); };
  QObject::connect(&window, &QWindow::widthChanged, root_.get(), resize);
  QObject::connect(&window, &QWindow::heightChanged, root_.get(), resize);
  QObject::connect(&window, &QWindow::visibleChanged, bridge_.get(), updateDrawn);
  resize();
  updateDrawn();
  root_->setParentItem(window.contentItem());
}

LockContentFactory lockScreenFactory(const Host& host, RunLoop& ticks) {
  return [host, &ticks, views = std::make_shared<SharedQmlEngine>()](ShutdownManager& engine) {
    return std::make_shared<LockScreenContent>(host, ticks, engine, views);
  };
}

}  // namespace lunevra
