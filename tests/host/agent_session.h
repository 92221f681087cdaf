#pragma once

#include <filesystem>
#include <fstream>

#include "host/child_process.h"

namespace lunevra::host_test {

/// A person's own service manager with the program's agent enabled in it, as after an installation.
/// It can bring the agent up; the home and the display are those of `environment`, which names
/// HOME and XDG_RUNTIME_DIR.
class AgentSession {
 public:
  AgentSession(const std::filesystem::path& home, std::vector<std::string> environment)
      : environment_(std::move(environment)) {
    const auto units = home / ".config/systemd/user";
    const auto wanted = units / "graphical-session.target.wants";
    std::filesystem::create_directories(wanted);
    writeUnit(units / unitName);
    std::filesystem::create_symlink(units / unitName, wanted / unitName);
    manager_.emplace(
        std::vector<std::string>{"/lib/systemd/systemd", "--user", "--unit=basic.target"},
        environment_);
    isAvailable_ = eventually([this] { return tell({"is-active", "-q", "basic.target"}); });
  }

  ~AgentSession() {
    tell({"exit"});
    static_cast<void>(manager_->exitStatus());
  }
  AgentSession(const AgentSession&) = delete;
  AgentSession& operator=(const AgentSession&) = delete;

  /// Whether this computer lets us have one.
  [[nodiscard]] bool isAvailable() const { return isAvailable_; }
  bool startAgent() { return tell({"start", unitName}); }
  /// SIGKILL to the program, however many processes it has.
  bool killProgram() { return tell({"kill", "--signal=KILL", unitName}); }

 private:
  static constexpr const char* unitName = "com.lunevra.enforcer.service";

  /// The agent's real unit, for the program that was built.
  static void writeUnit(const std::filesystem::path& path) {
    std::ifstream original(LUNEVRA_AGENT_UNIT);
    std::ofstream unit(path);
    for (std::string line; std::getline(original, line);) {
      for (const std::string setting : {"ExecStart=", "ConditionFileIsExecutable="})
        if (line.starts_with(setting)) line = setting + LUNEVRA_PROGRAM;
      unit << line << '\n';
    }
  }

  bool tell(std::vector<std::string> words) {
    words.insert(words.begin(), {"systemctl", "--user"});
    return ChildProcess(words, environment_).exitStatus() == 0;
  }

  std::vector<std::string> environment_;
  std::optional<ChildProcess> manager_;
  bool isAvailable_ = false;
};

}  // namespace lunevra::host_test
