#include "app/desktop_part.h"

#include <cstdlib>

#include "app/desktop_program.h"
#include "platform/linux/agent_start.h"

// A quit that was accepted with the lock off is the person's: a copy that waits is told, and the
// agent is not to bring the program back. Otherwise the computer is being shut down.
int lunevraRunDesktop(const lunevra::ProcessStart& start) {
  lunevra::DesktopProgram program(start);
  const int status = program.run();
  if (status != EXIT_SUCCESS || !program.isLockOff()) return status;
  start.instance.leaveWordOfQuit();
  return start.isAgentStart ? lunevra::acceptedQuitStatus : EXIT_SUCCESS;
}
