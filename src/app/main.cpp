#include <csignal>
#include <cstdlib>
#include <optional>

#include <QGuiApplication>

#include "app/daytime.h"
#include "app/menu_bar_extra.h"
#include "app/program.h"
#include "platform/desktop/desktop_host.h"
#include "platform/desktop/qt_open_panels.h"
#include "platform/desktop/qt_run_loop.h"
#include "platform/linux/agent_start.h"
#include "platform/linux/linux_host.h"
#include "platform/linux/single_instance.h"
#include "platform/linux/stderr_log.h"
#include "platform/localized_error.h"
#include "ui/lock_screen/lock_screen_content.h"

namespace lunevra {
namespace {

/// How a quit that was accepted ends the process: a copy that waits is told, and the agent is not
/// to bring back what the person may close.
int endAfterQuit(ShutdownManager& engine, const SingleInstance& instance, bool isAgentStart) {
  const bool isLockOff =
      engine.currentState() == BlockingState::idle && !engine.shouldPreventQuit();
  if (!isLockOff) return EXIT_SUCCESS;  // the computer is being shut down
  instance.leaveWordOfQuit();
  return isAgentStart ? acceptedQuitStatus : EXIT_SUCCESS;
}

int runApplication(char** arguments, const LinuxPaths& paths, const SingleInstance& instance,
                   bool isAgentStart) {
  TerminationSignals requests;
  FloorWindow floor;
  DesktopHost::prepareQt();
  int argumentCount = 1;  // the program's name; options would be Qt's, and there are none
  QGuiApplication application(argumentCount, arguments);
  QtRunLoop runLoop;
  QtOpenPanels openPanels(runLoop);
  LinuxHost computer(paths, runLoop, openPanels);
  const auto host = computer.host();
  DesktopHost desktop(floor, runLoop, host.log, host.notificationCenter);
  Program program(host, desktop.desktop(), lockScreenFactory(host, runLoop), daytimeContents(host));

  auto& delegate = program.app().appDelegate();
  desktop.onResignActive = [&] { delegate.applicationDidResignActive(); };
  desktop.onTerminateRequest = [&] {
    return delegate.applicationShouldTerminate() == TerminateReply::now;
  };
  desktop.handleSignals(requests);

  program.app().launch();
  runLoop.async([&] { program.app().windowGroupContentAppeared(); });
  std::optional<MenuBarExtra> menuBarExtra;
  runLoop.async([&] { menuBarExtra.emplace(program.app(), runLoop); });  // after the cover
  // A request like any other: the engine decides.
  if (instance.followsQuit()) runLoop.async([] { QGuiApplication::quit(); });
  const int status = QGuiApplication::exec();
  desktop.onResignActive = nullptr;  // the windows that close now are no reason to come back
  if (status != EXIT_SUCCESS) return status;
  return endAfterQuit(program.app().shutdownManager(), instance, isAgentStart);
}

int run(char** arguments) {
  std::signal(SIGPIPE, SIG_IGN);  // a reader of the log that ends must not end the lock
  StderrLog log;
  const bool isAgentStart = takeAgentStart();
  try {
    const auto paths = LinuxPaths::fromEnvironment();
    const auto instance = isAgentStart
                              ? std::optional(SingleInstance::waitFor(paths.lockFolders, log))
                              : SingleInstance::tryAcquire(paths.lockFolders, log);
    if (!instance) {
      log.line("Lunevra is already running.");
      return EXIT_SUCCESS;
    }
    return runApplication(arguments, paths, *instance, isAgentStart);
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
