#include "ui/daytime/daytime_content.h"

#include <algorithm>
#include <utility>

#include <QtGui/qscreen.h>
#include <QtQml/qqmlengine.h>
#include <QtQuick/qquickitem.h>
#include <QtQuick/qquickwindow.h>

#include "ui/daytime/menu_bar_bridge.h"
#include "ui/daytime/settings_bridge.h"
#include "ui/load_view.h"

// Named here so that the linker keeps what registers the modules' types.
void qml_register_types_Lunevra_LockScreen();
void qml_register_types_Lunevra_Daytime();

namespace lunevra {

DaytimeContent::DaytimeContent(Log& log, const char* view, Sizing sizing, BridgeFactory makeBridge)
    : log_(log), view_(view), sizing_(sizing), makeBridge_(std::move(makeBridge)) {}

DaytimeContent::~DaytimeContent() = default;

void DaytimeContent::attach(QQuickWindow& window) {
  window.setColor(QColor("#0a0a0f"));
  QObject::connect(&window, &QWindow::visibleChanged, &receiver_, [this, &window](bool isVisible) {
    if (isVisible) return load(window);
    // Not at once: a handler of the view may be what has hidden the window.
    QMetaObject::invokeMethod(
        &receiver_,
        [this, &window] {
          if (!window.isVisible()) unload();
        },
        Qt::QueuedConnection);
  });
  for (const auto resized : {&QWindow::widthChanged, &QWindow::heightChanged})
    QObject::connect(&window, resized, &receiver_, [this, &window] { fit(window); });
  if (sizing_ == Sizing::windowFitsView)
    QObject::connect(&window, &QWindow::activeChanged, &receiver_, [&window] {
      if (!window.isActive()) window.hide();  // a press elsewhere puts a menu away
    });
  if (window.isVisible()) load(window);
}

void DaytimeContent::load(QQuickWindow& window) {
  unload();
  qml_register_types_Lunevra_LockScreen();
  qml_register_types_Lunevra_Daytime();
  engine_ = std::make_unique<QQmlEngine>();
  bridge_ = makeBridge_();
  root_ = loadView(*engine_, view_, *bridge_, log_);
  if (!root_) return;
  root_->setParentItem(window.contentItem());
  QObject::connect(root_.get(), &QQuickItem::implicitHeightChanged, &receiver_,
                   [this, &window] { fit(window); });
  fit(window);
  root_->forceActiveFocus();
}

void DaytimeContent::unload() {
  root_.reset();
  bridge_.reset();
  engine_.reset();
}

void DaytimeContent::fit(QQuickWindow& window) {
  if (!root_) return;
  if (sizing_ == Sizing::windowFitsView) {
    QRect frame(window.position(),
                QSize(qRound(root_->implicitWidth()), qRound(root_->implicitHeight())));
    const auto room = window.screen()->availableGeometry();
    frame.moveRight(std::min(frame.right(), room.right()));
    frame.moveBottom(std::min(frame.bottom(), room.bottom()));
    frame.moveLeft(std::max(frame.left(), room.left()));
    frame.moveTop(std::max(frame.top(), room.top()));
    window.setGeometry(frame);
  }
  root_->setSize(window.size());
}

std::shared_ptr<DaytimeContent> settingsContent(const Host& host, ShutdownManager& engine,
                                                std::function<void()> dismiss) {
  return std::make_shared<DaytimeContent>(
      host.log, "Daytime/SettingsView", DaytimeContent::Sizing::viewFillsWindow,
      [host, &engine, dismiss = std::move(dismiss)] {
        auto bridge = std::make_unique<SettingsBridge>(host, engine, dismiss);
        bridge->model().loadFromEngine();
        bridge->model().setDrawn(true);
        return bridge;
      });
}

std::shared_ptr<DaytimeContent> menuBarContent(const Host& host, ShutdownManager& engine,
                                               const MenuBarModel::Actions& actions,
                                               std::function<void()> close) {
  return std::make_shared<DaytimeContent>(
      host.log, "Daytime/MenuBarView", DaytimeContent::Sizing::windowFitsView,
      [host, &engine, actions, close = std::move(close)] {
        auto bridge = std::make_unique<MenuBarBridge>(host.runLoop, engine, actions);
        QObject::connect(bridge.get(), &MenuBarBridge::closed, close);
        bridge->model().setDrawn(true);
        return bridge;
      });
}

}  // namespace lunevra
