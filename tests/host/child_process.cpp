#include "host/child_process.h"

#include <csignal>
#include <cstdlib>
#include <fcntl.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include "host/eventually.h"

namespace lunevra::host_test {

ChildProcess::ChildProcess(const std::vector<std::string>& command,
                           const std::vector<std::string>& environment, int keptDescriptor)
    : pid_(fork()) {
  if (pid_ != 0) return;
  prctl(PR_SET_PDEATHSIG, SIGKILL);
  if (keptDescriptor >= 0) fcntl(keptDescriptor, F_SETFD, 0);
  for (const auto& entry : environment) putenv(const_cast<char*>(entry.c_str()));
  std::vector<char*> arguments;
  for (const auto& argument : command) arguments.push_back(const_cast<char*>(argument.c_str()));
  arguments.push_back(nullptr);
  execvp(arguments.front(), arguments.data());
  _exit(127);
}

ChildProcess::~ChildProcess() {
  if (!isRunning()) return;
  signal(SIGKILL);
  static_cast<void>(exitStatus());
}

void ChildProcess::signal(int number) const {
  kill(pid_, number);
}

bool ChildProcess::isRunning() {
  int status = 0;
  if (!status_ && waitpid(pid_, &status, WNOHANG) == pid_)
    status_ = WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
  return !status_;
}

std::optional<int> ChildProcess::exitStatus(std::chrono::milliseconds deadline) {
  eventually([this] { return !isRunning(); }, deadline);
  return status_;
}

}  // namespace lunevra::host_test
