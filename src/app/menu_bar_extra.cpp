#include "app/menu_bar_extra.h"

#include <QGuiApplication>
#include <QPainter>
#include <QScreen>

#include "ui/menu_bar/menu_bar_model.h"
#include "ui/symbol_paths.h"

namespace lunevra {
namespace {

QImage moon(int side) {
  QImage image(side, side, QImage::Format_ARGB32);
  image.fill(Qt::transparent);
  QPainter painter(&image);
  painter.setRenderHint(QPainter::Antialiasing);
  const double size = side * 0.72;
  const double margin = (side - symbolSide(size)) / 2.0;
  painter.translate(margin, margin);
  painter.fillPath(symbolPath("moon.fill", size, 1.0), Qt::white);
  return image;
}

QList<QImage> moons() {
  return {moon(22), moon(32), moon(44), moon(64)};
}

}  // namespace

MenuBarExtra::MenuBarExtra(TorvaneApp& app, RunLoop& runLoop)
    : app_(app),
      item_(QStringLiteral("Lunevra"), moons()),
      follower_(runLoop, app.shutdownManager(), [this] {
        item_.setToolTip(QString::fromStdString(tonightText(app_.shutdownManager())));
      }) {
  follower_.readNow();
  item_.onActivate = [this](int x, int y) {
    const double scale = qGuiApp->devicePixelRatio();  // trays speak of pixels
    app_.openMenu(x / scale, y / scale);
  };
}

}  // namespace lunevra
