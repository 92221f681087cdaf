#include <csignal>
#include <cstdlib>
#include <dlfcn.h>
#include <optional>
#include <string>

#include "app/desktop_part.h"
#include "app/early_cover.h"
#include "platform/linux/agent_start.h"
#include "platform/linux/stderr_log.h"
#include "platform/localized_error.h"

namespace lunevra {
namespace {

int runDesktop(const ProcessStart& start) {
  void* const part = ::dlopen(LUNEVRA_DESKTOP_PART, RTLD_LAZY);
  void* const entry = part != nullptr ? ::dlsym(part, "lunevraRunDesktop") : nullptr;
  if (entry == nullptr)
    throw LocalizedError("Lunevra is not installed completely: " + std::string(::dlerror()));
  return reinterpret_cast<decltype(&lunevraRunDesktop)>(entry)(start);
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
    TerminationSignals requests;
    FloorWindow floor;
    coverRunningNight(paths, isAgentStart, floor, log);
    return runDesktop({arguments, paths, *instance, requests, isAgentStart, floor});
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
