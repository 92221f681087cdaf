#include "platform/desktop/desktop_host.h"

#include <cstdlib>

#include <QCoreApplication>
#include <QEvent>
#include <QGuiApplication>
#include <QQuickWindow>
#include <QSGRendererInterface>

#include "platform/workspace.h"

namespace lunevra {

void DesktopHost::prepareQt() {
  qputenv("QT_QPA_PLATFORM", "xcb");
  // A lock must not hang on a graphics driver.
  QQuickWindow::setGraphicsApi(QSGRendererInterface::Software);
  QGuiApplication::setQuitOnLastWindowClosed(false);
}

DesktopHost::DesktopHost(FloorWindow& floor, RunLoop& runLoop, Log& log, NotificationCenter& center)
    : log_(log),
      floor_(floor, runLoop, log),
      application_(floor_, runLoop, log),
      displays_(application_, runLoop, center),
      floorNotifier_(floor.fileDescriptor(), QSocketNotifier::Read) {
  // The window group's window: the first of the program and never ordered in.
  static_cast<void>(application_.makeWindow({}));
  floor_.onDesktopSwitched = [this] {
    workspaceNotifications_.post(workspace_notification::activeSpaceDidChange);
  };
  floor_.onConnectionLost = [this] { endForLostDisplay(); };
  application_.onPresentationOptionsChanged = [this](PresentationOptions options) {
    if (onPresentationOptionsChanged) onPresentationOptionsChanged(options);
  };
  QObject::connect(&floorNotifier_, &QSocketNotifier::activated, &quitFilter_,
                   [this] { floor_.readNews(); });
  QObject::connect(qGuiApp, &QGuiApplication::applicationStateChanged, &quitFilter_,
                   [this](Qt::ApplicationState state) {
                     if (state != Qt::ApplicationActive && onResignActive) onResignActive();
                   });
  // The session manager ends the session.
  QObject::connect(qGuiApp, &QGuiApplication::commitDataRequest, &quitFilter_,
                   [this] { workspaceNotifications_.post(workspace_notification::willPowerOff); });
  qGuiApp->installEventFilter(&quitFilter_);
}

Desktop DesktopHost::desktop() {
  return {displays_, application_, keyEvents_, workspaceNotifications_};
}

void DesktopHost::handleSignals(TerminationSignals& requests) {
  signalNotifier_ =
      std::make_unique<QSocketNotifier>(requests.fileDescriptor(), QSocketNotifier::Read);
  QObject::connect(signalNotifier_.get(), &QSocketNotifier::activated, &quitFilter_,
                   [this, &requests] {
                     if (requests.take() && acceptsTermination()) QCoreApplication::exit(0);
                   });
}

bool DesktopHost::QuitFilter::eventFilter(QObject* receiver, QEvent* event) {
  return event->type() == QEvent::Quit && receiver == QCoreApplication::instance() &&
         !host_.acceptsTermination();
}

bool DesktopHost::acceptsTermination() const {
  return onTerminateRequest && onTerminateRequest();
}

void DesktopHost::endForLostDisplay() {
  log_.line("The X server is gone.");
  // Nothing of the toolkit can be taken down in order without its server, and all that matters is
  // on disk already.
  std::_Exit(EXIT_FAILURE);
}

}  // namespace lunevra
