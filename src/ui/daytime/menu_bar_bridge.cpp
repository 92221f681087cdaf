#include "ui/daytime/menu_bar_bridge.h"

#include <utility>

namespace lunevra {
namespace {

QColor colorOf(MenuTint tint) {
  switch (tint) {
    case MenuTint::primary:
      return QColor(255, 255, 255, 230);
    case MenuTint::secondary:
      return QColor(255, 255, 255, 140);
    case MenuTint::green:
      return QColor("#22c55e");
    case MenuTint::orange:
      return QColor("#f97316");
  }
  return Qt::white;
}

}  // namespace

MenuBarBridge::MenuBarBridge(RunLoop& runLoop, ShutdownManager& engine,
                             MenuBarModel::Actions actions)
    : model_(runLoop, engine, std::move(actions)) {
  observation_ = model_.observeChanges([this] { emit changed(); });
}

MenuRowValue MenuBarBridge::value(MenuItem item) const {
  const auto& row = model_.rows()[item];
  return {.text = QString::fromStdString(row.text),
          .detail = QString::fromStdString(row.detail),
          .symbol = QString::fromStdString(row.symbolName),
          .color = colorOf(row.tint),
          .shown = row.isShown,
          .enabled = row.isEnabled,
          .checked = row.isChecked,
          .button = row.kind == MenuRowKind::button};
}

void MenuBarBridge::setEnabled(bool isEnabled) {
  model_.setEnabled(isEnabled);
}

void MenuBarBridge::openSettings() {
  close();
  model_.openSettings();
}

void MenuBarBridge::quit() {
  model_.quit();
}

}  // namespace lunevra
