#include <csignal>
#include <cstdlib>
#include <optional>

#include "app/desktop_program.h"
#include "platform/linux/agent_start.h"
#include "platform/linux/single_instance.h"
#include "platform/linux/stderr_log.h"
#include "platform/localized_error.h"

namespace lunevra {
namespace {

/// A quit that was accepted with the lock off is the person's: a copy that waits is told, and the
/// agent is not to bring the program back. Otherwise the computer is being shut down.
int runUntilQuit(char** arguments, const LinuxPaths& paths, const SingleInstance& instance,
                 bool isAgentStart) {
  DesktopProgram program(arguments, paths, instance, isAgentStart);
  const int status = program.run();
  if (status != EXIT_SUCCESS || !program.isLockOff()) return status;
  instance.leaveWordOfQuit();
  return isAgentStart ? acceptedQuitStatus : EXIT_SUCCESS;
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
    return runUntilQuit(arguments, paths, *instance, isAgentStart);
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
