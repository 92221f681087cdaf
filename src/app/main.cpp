#include <csignal>
#include <cstdlib>

#include <QGuiApplication>

#include "app/program.h"
#include "platform/desktop/desktop_host.h"
#include "platform/desktop/qt_open_panels.h"
#include "platform/desktop/qt_run_loop.h"
#include "platform/linux/linux_host.h"
#include "platform/linux/single_instance.h"
#include "platform/linux/stderr_log.h"
#include "platform/localized_error.h"
#include "ui/lock_screen/lock_screen_content.h"

namespace lunevra {
namespace {

int runApplication(char** arguments, const LinuxPaths& paths, FloorWindow& floor,
                   TerminationSignals& requests) {
  DesktopHost::prepareQt();
  int argumentCount = 1;  // the program's name; options would be Qt's, and there are none
  QGuiApplication application(argumentCount, arguments);
  QtRunLoop runLoop;
  QtOpenPanels openPanels(runLoop);
  LinuxHost computer(paths, runLoop, openPanels);
  const auto host = computer.host();
  DesktopHost desktop(floor, runLoop, host.log, host.notificationCenter);
  Program program(host, desktop.desktop(), lockScreenFactory(host, runLoop));

  auto& delegate = program.app().appDelegate();
  desktop.onResignActive = [&] { delegate.applicationDidResignActive(); };
  desktop.onTerminateRequest = [&] {
    return delegate.applicationShouldTerminate() == TerminateReply::now;
  };
  desktop.handleSignals(requests);

  program.app().launch();
  runLoop.async([&] { program.app().windowGroupContentAppeared(); });
  const int status = QGuiApplication::exec();
  desktop.onResignActive = nullptr;  // the windows that close now are no reason to come back
  return status;
}

int run(char** arguments) {
  std::signal(SIGPIPE, SIG_IGN);  // a reader of the log that ends must not end the lock
  TerminationSignals requests;
  StderrLog log;
  try {
    const auto paths = LinuxPaths::fromEnvironment();
    const auto instance = SingleInstance::tryAcquire(paths.lockFolders, log);
    if (!instance) {
      log.line("Lunevra is already running.");
      return EXIT_SUCCESS;
    }
    FloorWindow floor;
    return runApplication(arguments, paths, floor, requests);
  } catch (const LocalizedError& error) {
    log.line(error.localizedDescription());
    return EXIT_FAILURE;  // whoever supervises the program starts it again
  }
}

}  // namespace
}  // namespace lunevra

int main(int, char** arguments) {
  return lunevra::run(arguments);
}
