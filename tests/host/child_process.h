#pragma once

#include <chrono>
#include <optional>
#include <string>
#include <sys/types.h>
#include <vector>

namespace lunevra::host_test {

/// A program started for one test, ended with it. Its output goes to the test's own.
class ChildProcess {
 public:
  /// `environment` is added to the test's own; `keptDescriptor` is inherited.
  ChildProcess(const std::vector<std::string>& command, const std::vector<std::string>& environment,
               int keptDescriptor = -1);
  ~ChildProcess();
  ChildProcess(const ChildProcess&) = delete;
  ChildProcess& operator=(const ChildProcess&) = delete;

  void signal(int number) const;
  [[nodiscard]] bool isRunning();
  /// How it ended, as a shell reports it; nothing if it still runs.
  [[nodiscard]] std::optional<int> exitStatus(
      std::chrono::milliseconds deadline = std::chrono::seconds(10));

 private:
  pid_t pid_;
  std::optional<int> status_;
};

}  // namespace lunevra::host_test
