#include "platform/desktop/qt_application.h"

#include <algorithm>

#include <QGuiApplication>

#include "platform/desktop/x11_connection.h"

namespace lunevra {
namespace {

void putOnTop(xcb_window_t window) {
  const std::uint32_t mode[] = {XCB_STACK_MODE_ABOVE};
  xcb_configure_window(qtConnection(), window, XCB_CONFIG_WINDOW_STACK_MODE, mode);
}

void putUnder(xcb_window_t window, xcb_window_t sibling) {
  const std::uint32_t place[] = {sibling, XCB_STACK_MODE_BELOW};
  xcb_configure_window(qtConnection(), window,
                       XCB_CONFIG_WINDOW_SIBLING | XCB_CONFIG_WINDOW_STACK_MODE, place);
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
  if (floor_.isUp()) restack();
  if (onPresentationOptionsChanged) onPresentationOptionsChanged(options);
}

void QtApplication::activateIgnoringOtherApps() {
  floor_.holdInput();
  if (const auto key = keyWindow_.lock(); key && !isActive()) key->makeKeyWindow();
}

bool QtApplication::isActive() const {
  return QGuiApplication::applicationState() == Qt::ApplicationActive;
}

// Each window goes under the one before it, so a restack that changes nothing makes the server
// neither paint nor report anything.
void QtApplication::restack() {
  xcb_window_t lowest = XCB_WINDOW_NONE;
  for (const auto& window : windows_) {
    if (!window->isVisible()) continue;
    if (lowest == XCB_WINDOW_NONE)
      putOnTop(window->nativeId());
    else
      putUnder(window->nativeId(), lowest);
    lowest = window->nativeId();
  }
  const auto floor = floor_.floor().id();
  if (floor_.isUp() && lowest == XCB_WINDOW_NONE) putOnTop(floor);
  if (floor_.isUp() && lowest != XCB_WINDOW_NONE) putUnder(floor, lowest);
  xcb_flush(qtConnection());
}

// One that was put away has no keyboard.
std::shared_ptr<Window> QtApplication::keyWindow() const {
  auto key = keyWindow_.lock();
  return key && key->isVisible() ? key : nullptr;
}

void QtApplication::orderedFront(DesktopWindow& window) {
  if (floor_.isUp()) return restack();
  putOnTop(window.nativeId());
  xcb_flush(qtConnection());
}

void QtApplication::becameKey(DesktopWindow& window) {
  keyWindow_ = owning(window);
}

void QtApplication::closed(DesktopWindow& window) {
  const auto owned = owning(window);  // the caller is still at work in it
  std::erase(windows_, owned);
  if (keyWindow_.lock() == owned) keyWindow_.reset();
}

std::shared_ptr<DesktopWindow> QtApplication::owning(const DesktopWindow& window) const {
  const auto found = std::find_if(windows_.begin(), windows_.end(),
                                  [&](const auto& owned) { return owned.get() == &window; });
  return found == windows_.end() ? nullptr : *found;
}

}  // namespace lunevra
