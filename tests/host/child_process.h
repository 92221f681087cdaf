#pragma once

#include <csignal>
#include <cstdlib>
#include <fcntl.h>
#include <optional>
#include <string>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>

#include "host/eventually.h"

namespace lunevra::host_test {

/// A program started for one test and ended with it.
class ChildProcess {
 public:
  /// `environment` is added to the test's own; `keptDescriptor` is inherited.
  ChildProcess(const std::vector<std::string>& command, const std::vector<std::string>& environment,
               int keptDescriptor = -1)
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
  ~ChildProcess() {
    signal(SIGKILL);
    static_cast<void>(exitStatus());
  }
  ChildProcess(const ChildProcess&) = delete;
  ChildProcess& operator=(const ChildProcess&) = delete;

  [[nodiscard]] pid_t pid() const { return pid_; }

  void signal(int number) {
    if (isRunning()) kill(pid_, number);
  }
  [[nodiscard]] bool isRunning() {
    int status = 0;
    if (!status_ && waitpid(pid_, &status, WNOHANG) == pid_)
      status_ = WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
    return !status_;
  }
  /// How it ended, as a shell reports it; nothing if it still runs.
  [[nodiscard]] std::optional<int> exitStatus(
      std::chrono::milliseconds deadline = std::chrono::seconds(10)) {
    eventually([this] { return !isRunning(); }, deadline);
    return status_;
  }

 private:
  pid_t pid_;
  std::optional<int> status_;
};

}  // namespace lunevra::host_test
