#include "platform/desktop/desktop_window.h"

#include <exception>
#include <utility>

#include <QGuiApplication>
#include <QMouseEvent>
#include <QPalette>

#include "platform/desktop/qt_connection.h"
#include "platform/desktop/quick_content.h"

namespace lunevra {
namespace {

QRect toQRect(const Rect& rect) {
  return QRectF(rect.x, rect.y, rect.width, rect.height).toRect();
}

QScreen* screenNamed(const std::string& name) {
  for (auto* screen : QGuiApplication::screens())
    if (screen->name().toStdString() == name) return screen;
  return nullptr;
}

// Without it the server shows what was on the screen before until Qt has drawn its first frame.
void setNativeBackground(xcb_window_t window, const QColor& color) {
  const std::uint32_t pixel[] = {color.rgb() & 0xFFFFFFU};
  xcb_change_window_attributes(qtConnection(), window, XCB_CW_BACK_PIXEL, pixel);
}

}  // namespace

/// Of the events of a menu's window, the first picture and the presses.
class DesktopWindow::MenuFilter : public QObject {
 public:
  explicit MenuFilter(QWindow& window) : window_(window) { window.installEventFilter(this); }

 private:
  bool eventFilter(QObject*, QEvent* event) override {
    if (event->type() == QEvent::Expose && window_.isExposed()) window_.setMouseGrabEnabled(true);
    if (event->type() != QEvent::MouseButtonPress) return false;
    const auto place = static_cast<QMouseEvent*>(event)->position();
    const bool isElsewhere = !QRectF({}, window_.size()).contains(place);
    if (isElsewhere) window_.hide();
    return isElsewhere;
  }

  QWindow& window_;
};

DesktopWindow::DesktopWindow(Owner& owner, RunLoop& runLoop, Log& log,
                             const WindowDescription& description)
    : owner_(owner),
      runLoop_(runLoop),
      log_(log),
      frame_(description.contentRect),
      screen_(description.screen ? screenNamed(description.screen->name) : nullptr),
      style_(description.styleMask),
      title_(description.title),
      canBecomeKey_(description.canBecomeKey) {}

void DesktopWindow::setBackgroundColor(WindowColor color) {
  color_ = color;
  if (window_)
    window_->setColor(color == WindowColor::black ? Qt::black : QPalette().window().color());
}

void DesktopWindow::setIgnoresMouseEvents(bool ignores) {
  ignoresMouse_ = ignores;
  if (window_) window_->setFlag(Qt::WindowTransparentForInput, ignores);
}

void DesktopWindow::setContentView(std::shared_ptr<WindowContent> content) {
  content_ = std::move(content);
  isContentAttached_ = false;
  if (isVisible()) attachContentLater();
}

void DesktopWindow::setFrame(const Rect& frame, bool) {
  frame_ = frame;
  if (!window_) return;
  if (style_ == WindowStyle::titled) {
    screen_ = QGuiApplication::screenAt(toQRect(frame).center());
    fixSize();
  }
  window_->setGeometry(toQRect(frame));
}

void DesktopWindow::fixSize() {
  const auto size = toQRect(frame_).size();
  window_->setMinimumSize(size);
  window_->setMaximumSize(size);
}

void DesktopWindow::orderFrontRegardless() {
  if (isClosed_) return;
  if (!window_) createNativeWindow();
  if (!window_->isVisible()) {
    window_->show();
    attachContentLater();
  }
  owner_.orderedFront(*this);
}

void DesktopWindow::createNativeWindow() {
  window_ = std::make_unique<QQuickWindow>();
  window_->setFlags(flags());
  window_->setTitle(QString::fromStdString(title_));
  setIgnoresMouseEvents(ignoresMouse_);
  setBackgroundColor(color_);
  if (screen_) window_->setScreen(screen_);
  window_->setGeometry(toQRect(frame_));
  if (style_ == WindowStyle::titled) fixSize();
  if (level_ == WindowLevel::popUpMenu) menuFilter_ = std::make_unique<MenuFilter>(*window_);
  window_->create();
  setNativeBackground(nativeId(), window_->color());
}

Qt::WindowFlags DesktopWindow::flags() const {
  if (style_ == WindowStyle::titled)
    return Qt::Window | Qt::CustomizeWindowHint | Qt::WindowTitleHint | Qt::WindowSystemMenuHint |
           Qt::WindowCloseButtonHint;
  switch (level_) {
    case WindowLevel::normal:
      return Qt::Window | Qt::FramelessWindowHint;
    case WindowLevel::popUpMenu:
      return Qt::Tool | Qt::FramelessWindowHint | Qt::WindowStaysOnTopHint;
    case WindowLevel::screenSaver:
      return Qt::Window | Qt::FramelessWindowHint | Qt::BypassWindowManagerHint;
  }
  return Qt::Window;
}

void DesktopWindow::attachContentLater() {
  runLoop_.async(lifetime_.guard([this] { attachContent(); }));
}

void DesktopWindow::attachContent() {
  auto* const content = dynamic_cast<QuickContent*>(content_.get());
  if (content == nullptr || isContentAttached_ || !isVisible()) return;
  isContentAttached_ = true;
  try {
    content->attach(*window_);
  } catch (const std::exception& error) {
    // The cover matters more than what it shows: the window stays as black as it is.
    log_.line(std::string("A window's content cannot be shown: ") + error.what());
  }
}

void DesktopWindow::orderOut() {
  if (window_) window_->hide();
}

void DesktopWindow::makeKeyWindow() {
  if (!canBecomeKey_ || !isVisible()) return;
  if (level_ != WindowLevel::screenSaver) {
    // The window manager maps it when it likes, and gives it the keyboard then.
    window_->requestActivate();
    owner_.becameKey(*this);
    return;
  }
  // Qt would ask with the time of its last event, which the server takes for an outdated wish. What
  // is typed after the window's end goes nowhere until somebody says where.
  xcb_set_input_focus(qtConnection(), XCB_INPUT_FOCUS_NONE, nativeId(), XCB_CURRENT_TIME);
  xcb_flush(qtConnection());
  owner_.becameKey(*this);
}

void DesktopWindow::close() {
  if (std::exchange(isClosed_, true)) return;
  content_.reset();
  window_.reset();
  owner_.closed(*this);  // may be the last to hold it
}

std::optional<std::string> DesktopWindow::screenName() const {
  if (!screen_) return std::nullopt;
  return screen_->name().toStdString();
}

std::uint32_t DesktopWindow::nativeId() const {
  return static_cast<std::uint32_t>(window_->winId());
}

}  // namespace lunevra
