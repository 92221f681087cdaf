#pragma once

#include <functional>
#include <memory>

#include <QtCore/qobject.h>

#include "platform/desktop/quick_content.h"
#include "ui/menu_bar/menu_bar_model.h"
#include "ui/settings/settings_model.h"

class QQmlEngine;
class QQuickItem;

namespace lunevra {

/// A view that is seen by day. It and its model are there only while the window is shown, and made
/// afresh each time. Should it fail to load, one line in the log says why.
class DaytimeContent : public QuickContent {
 public:
  using BridgeFactory = std::function<std::unique_ptr<QObject>()>;
  enum class Sizing { viewFillsWindow, windowFitsView };

  /// `view` names the module and the component. The log outlives the content.
  DaytimeContent(Log& log, const char* view, Sizing sizing, BridgeFactory makeBridge);
  ~DaytimeContent() override;
  DaytimeContent(const DaytimeContent&) = delete;
  DaytimeContent& operator=(const DaytimeContent&) = delete;

  void attach(QQuickWindow& window) override;
  /// Null while the window is not shown.
  [[nodiscard]] QQuickItem* root() const { return root_.get(); }

 private:
  void load(QQuickWindow& window);
  void unload();
  void fit(QQuickWindow& window);

  Log& log_;
  const char* view_;
  Sizing sizing_;
  BridgeFactory makeBridge_;
  std::unique_ptr<QQmlEngine> engine_;
  std::unique_ptr<QObject> bridge_;
  std::unique_ptr<QQuickItem> root_;  // goes before the bridge and the engine that it lives on
  QObject receiver_;
};

/// Everything given outlives the content.
[[nodiscard]] std::shared_ptr<DaytimeContent> settingsContent(const Host& host,
                                                              ShutdownManager& engine,
                                                              std::function<void()> dismiss);

/// `close` puts the menu away.
[[nodiscard]] std::shared_ptr<DaytimeContent> menuBarContent(const Host& host,
                                                             ShutdownManager& engine,
                                                             const MenuBarModel::Actions& actions,
                                                             std::function<void()> close);

}  // namespace lunevra
