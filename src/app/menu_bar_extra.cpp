#include "app/menu_bar_extra.h"

#include <QGuiApplication>
#include <QPainter>
#include <QScreen>

#include "ui/symbol_paths.h"

namespace lunevra {
namespace {

constexpr QColor indigo(0x63, 0x66, 0xf1);  // reads on light and on dark panels

QImage moon(int side) {
  QImage image(side, side, QImage::Format_ARGB32);
  image.fill(Qt::transparent);
  QPainter painter(&image);
  painter.setRenderHint(QPainter::Antialiasing);
  const double size = side * 0.72;
  const double margin = (side - symbolSide(size)) / 2.0;
  painter.translate(margin, margin);
  painter.fillPath(symbolPath("moon.fill", size, 1.0), indigo);
  return image;
}

QList<QImage> moons() {
  return {moon(22), moon(32), moon(44), moon(64)};
}

/// Trays speak of the server's pixels. The toolkit leaves the corner of each display where the
/// server has it, and scales from there.
QPointF pointAt(QPointF pixel) {
  for (const auto* screen : QGuiApplication::screens()) {
    const QPointF corner = screen->geometry().topLeft();
    const double scale = screen->devicePixelRatio();
    if (QRectF(corner, QSizeF(screen->size()) * scale).contains(pixel))
      return corner + (pixel - corner) / scale;
  }
  return pixel;
}

TrayMenu::Entry entryOf(const MenuRow& row) {
  TrayMenu::Entry entry{.label = QString::fromStdString(row.text), .isShown = row.isShown};
  if (!row.detail.empty()) entry.label += " — " + QString::fromStdString(row.detail);
  const bool isToggle = row.kind == MenuRowKind::toggle;
  entry.isEnabled = row.isEnabled && (isToggle || row.kind == MenuRowKind::button);
  if (isToggle) entry.isChecked = row.isChecked;
  return entry;
}

}  // namespace

MenuBarExtra::MenuBarExtra(TorvaneApp& app, RunLoop& runLoop)
    : app_(app),
      model_(runLoop, app.shutdownManager(),
             {.openSettings = [&app] { app.openSettings(); },
              .terminate = [] { QCoreApplication::quit(); }}),
      item_(QStringLiteral("Lunevra"), moons()),
      observation_(model_.observeChanges([this] { show(); })) {
  show();
  item_.onActivate = [this](int x, int y) {
    const auto point = pointAt(QPointF(x, y));
    app_.openMenu(point.x(), point.y());
  };
  menu_.onOpening = [this] { model_.refresh(); };
  menu_.onChosen = [this](int place) { choose(MenuItem(place)); };
}

void MenuBarExtra::show() {
  item_.setToolTip(QString::fromStdString(tonightText(app_.shutdownManager())));
  QList<TrayMenu::Entry> entries;
  for (const auto& row : model_.rows()) entries.append(entryOf(row));
  menu_.setEntries(entries);
}

void MenuBarExtra::choose(MenuItem row) {
  if (row == MenuItem::nightlySwitch) model_.setEnabled(!model_.rows()[row].isChecked);
  if (row == MenuItem::settings) model_.openSettings();
  if (row == MenuItem::quit) model_.quit();
}

}  // namespace lunevra
