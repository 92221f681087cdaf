// What the program does when it starts, without windows: takes its turn as the one running copy and
// writes its process id into FOLDER/holder. SIGTERM is an accepted quit with the lock off.
//   lunevra_agent_stand_in FOLDER
#include <csignal>
#include <fstream>
#include <unistd.h>

#include "platform/linux/agent_start.h"
#include "platform/linux/single_instance.h"
#include "platform/linux/stderr_log.h"

int main(int count, char** arguments) {
  if (count < 2) return 1;
  using namespace lunevra;
  StderrLog log;
  const std::array<std::filesystem::path, 1> folders{arguments[1]};
  const bool isAgentStart = takeAgentStart();
  std::ofstream(folders[0] / "starts", std::ios::app) << (isAgentStart ? "agent" : "hand") << "\n";
  const auto instance = isAgentStart ? std::optional(SingleInstance::waitFor(folders, log))
                                     : SingleInstance::tryAcquire(folders, log);
  if (!instance) return 0;
  sigset_t quit;
  sigemptyset(&quit);
  sigaddset(&quit, SIGTERM);
  sigprocmask(SIG_BLOCK, &quit, nullptr);
  std::ofstream(folders[0] / "new") << ::getpid() << std::endl;
  std::filesystem::rename(folders[0] / "new", folders[0] / "holder");
  int signal = 0;
  if (!instance->followsQuit()) sigwait(&quit, &signal);
  instance->leaveWordOfQuit();
  return isAgentStart ? acceptedQuitStatus : 0;
}
