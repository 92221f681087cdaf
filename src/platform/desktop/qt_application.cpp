#include "platform/desktop/qt_application.h"

#include <algorithm>
#include <utility>

#include <QGuiApplication>

#include "platform/desktop/qt_connection.h"

namespace lunevra {
namespace {

void putOnTop(xcb_window_t window) {
  const std::uint32_t mode[] = {XCB_STACK_MODE_ABOVE};
  xcb_configure_window(qtConnection(), window, XCB_CONFIG_WINDOW_STACK_MODE, mode);
}

}  // namespace

QtApplication::QtApplication(FloorGuard& floor, RunLoop& runLoop, Log& log)
    : floor_(floor), runLoop_(runLoop), log_(log) {}

std::vector<std::shared_ptr<Window>> QtApplication::windows() const {
  return {windows_.begin(), windows_.end()};
}

std::shared_ptr<Window> QtApplication::makeWindow(const WindowDescription& description) {
  DesktopWindow::Owner& owner = *this;
  return windows_.emplace_back(std::make_shared<DesktopWindow>(owner, runLoop_, log_, description));
}

void QtApplication::setPresentationOptions(PresentationOptions options) {
  options_ = options;
  floor_.setUp(contains(options, PresentationOptions::disableProcessSwitching));
  if (floor_.isUp()) layPile();
  if (onPresentationOptionsChanged) onPresentationOptionsChanged(options);
}

void QtApplication::activateIgnoringOtherApps() {
  floor_.holdInput();
  if (const auto key = keyWindow_.lock(); key && !isActive()) key->makeKeyWindow();
}

bool QtApplication::isActive() const {
  return QGuiApplication::applicationState() == Qt::ApplicationActive;
}

void QtApplication::layPile() {
  WindowPile pile;
  for (const auto& window : windows_)
    if (window->isVisible()) pile.push_back(window->nativeId());
  xcb_flush(qtConnection());  // they have to be there for the floor's own connection
  floor_.floor().setWindowsAbove(std::move(pile));
}

// One that was put away has no keyboard.
std::shared_ptr<Window> QtApplication::keyWindow() const {
  auto key = keyWindow_.lock();
  return key && key->isVisible() ? key : nullptr;
}

void QtApplication::orderedFront(DesktopWindow& window) {
  if (floor_.isUp()) return layPile();
  putOnTop(window.nativeId());
  xcb_flush(qtConnection());
}

void QtApplication::becameKey(DesktopWindow& window) {
  keyWindow_ = owning(window);
}

void QtApplication::closed(DesktopWindow& window) {
  const auto owned = owning(window);  // the caller is still at work in it
  std::erase(windows_, owned);
  if (floor_.isUp()) layPile();
  if (keyWindow_.lock() == owned) keyWindow_.reset();
}

std::shared_ptr<DesktopWindow> QtApplication::owning(const DesktopWindow& window) const {
  const auto found = std::find_if(windows_.begin(), windows_.end(),
                                  [&](const auto& owned) { return owned.get() == &window; });
  return found == windows_.end() ? nullptr : *found;
}

}  // namespace lunevra
