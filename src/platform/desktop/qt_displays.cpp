#include "platform/desktop/qt_displays.h"

#include <QCursor>
#include <QGuiApplication>
#include <QScreen>

#include "platform/workspace.h"

namespace lunevra {
namespace {

// While nothing is connected Qt invents a display and names it after the X display, ":0.0"; names
// of real outputs have no colon.
bool isPlaceholder(const QScreen& screen) {
  return screen.name().contains(u':');
}

Screen describe(const QScreen& screen) {
  const auto frame = screen.geometry();
  return {screen.name().toStdString(),
          {double(frame.x()), double(frame.y()), double(frame.width()), double(frame.height())}};
}

}  // namespace

QtDisplays::QtDisplays(const Application& application, RunLoop& runLoop, NotificationCenter& center)
    : application_(application), runLoop_(runLoop), center_(center) {
  const auto announce = [this] { announceSoon(); };
  QObject::connect(qGuiApp, &QGuiApplication::screenAdded, &receiver_, [this](QScreen* screen) {
    watch(*screen);
    announceSoon();
  });
  QObject::connect(qGuiApp, &QGuiApplication::screenRemoved, &receiver_, announce);
  QObject::connect(qGuiApp, &QGuiApplication::primaryScreenChanged, &receiver_, announce);
  for (const auto* screen : QGuiApplication::screens()) watch(*screen);
}

void QtDisplays::watch(const QScreen& screen) {
  QObject::connect(&screen, &QScreen::geometryChanged, &receiver_, [this] { announceSoon(); });
}

void QtDisplays::announceSoon() {
  if (std::exchange(isAnnouncing_, true)) return;
  runLoop_.async(lifetime_.guard([this] {
    isAnnouncing_ = false;
    center_.post(didChangeScreenParametersNotification);
  }));
}

std::vector<Screen> QtDisplays::screens() const {
  std::vector<Screen> screens;
  for (const auto* screen : QGuiApplication::screens())
    if (!isPlaceholder(*screen)) screens.push_back(describe(*screen));
  return screens;
}

std::optional<Screen> QtDisplays::mainScreen() const {
  const auto all = screens();
  const auto named = [&](const std::optional<std::string>& name) -> std::optional<Screen> {
    for (const auto& screen : all)
      if (screen.name == name) return screen;
    return std::nullopt;
  };
  if (const auto key = application_.keyWindow())
    if (auto screen = named(key->screenName())) return screen;
  if (const auto* under = QGuiApplication::screenAt(QCursor::pos()))
    if (auto screen = named(under->name().toStdString())) return screen;
  if (const auto* primary = QGuiApplication::primaryScreen())
    if (auto screen = named(primary->name().toStdString())) return screen;
  return all.empty() ? std::nullopt : std::optional(all.front());
}

}  // namespace lunevra
