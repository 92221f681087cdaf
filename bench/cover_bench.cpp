// How long a screen stays open after the program's start and after its death, beside the lockers
// that are installed. Needs an X display without a window manager, as under xvfb-run.

#include <cstdio>
#include <nlohmann/json.hpp>
#include <optional>
#include <vector>

#include "desktop.h"
#include "host/agent_session.h"
#include "measured_program.h"

namespace lunevra::bench {
namespace {

using host_test::AgentSession;
using host_test::ChildProcess;

constexpr int starts = 21;
constexpr int deaths = 11;

struct Locker {
  std::vector<std::string> command;
  std::vector<std::string> environment;
};

/// Medians in milliseconds, and the memory of the locked program.
struct Figures {
  double covered = 0, keyboard = 0, seenAfterDeath = 0, keyboardAfterDeath = 0;
  double megabytes = 0;
};

class CoverBench {
 public:
  std::optional<Figures> measure(const Locker& locker) {
    std::vector<double> covered, keyboard, seenAfterDeath, keyboardAfterDeath, megabytes;
    for (int i = 0; i <= starts; ++i) {  // the first one warms up
      desktop_.takeKeyboard();
      auto process = std::make_optional<ChildProcess>(locker.command, locker.environment);
      if (!desktop_.waitUntilLocked()) return std::nullopt;
      if (i > 0) covered.push_back(desktop_.coveredAfter());
      if (i > 0) keyboard.push_back(desktop_.keyboardTakenAfter());
      if (i > 0 && i <= deaths) {
        desktop_.rest(std::chrono::milliseconds(1500));
        megabytes.push_back(proportionalMegabytes(process->pid()));
        desktop_.takeKeyboard();
        end(*process);
        process.emplace(locker.command, locker.environment);
        if (!desktop_.waitUntilLocked()) return std::nullopt;
        seenAfterDeath.push_back(desktop_.seen());
        keyboardAfterDeath.push_back(desktop_.keyboardTakenAfter());
      }
      end(*process);
      if (!desktop_.waitUntilOpen()) return std::nullopt;
    }
    return Figures{median(covered), median(keyboard), median(seenAfterDeath),
                   median(keyboardAfterDeath), median(megabytes)};
  }

  /// The same death, with the next start left to the service manager.
  std::optional<Figures> measureUnder(AgentSession& agent) {
    std::vector<double> seen, keyboard;
    desktop_.takeKeyboard();
    if (!agent.startAgent() || !desktop_.waitUntilLocked()) return std::nullopt;
    for (int i = 0; i < deaths; ++i) {
      desktop_.rest(std::chrono::milliseconds(1500));
      desktop_.takeKeyboard();
      if (!agent.killProgram() || !desktop_.waitUntilLocked()) return std::nullopt;
      seen.push_back(desktop_.seen());
      keyboard.push_back(desktop_.keyboardTakenAfter());
    }
    return Figures{.seenAfterDeath = median(seen), .keyboardAfterDeath = median(keyboard)};
  }

 private:
  static void end(ChildProcess& process) {
    process.signal(SIGKILL);
    siginfo_t info{};
    ::waitid(P_PID, static_cast<id_t>(process.pid()), &info, WEXITED | WNOWAIT);
  }

  Desktop desktop_;
};

class Table {
 public:
  Table() {
    std::printf("%-22s %9s %9s %9s %9s %7s   (ms, MB)\n", "", "covered", "keyboard",
                "killed:", "keyboard", "PSS");
    std::printf("%-22s %9s %9s %9s %9s\n", "", "after", "after", "seen for", "after");
  }
  void add(const std::string& name, const std::optional<Figures>& figures) {
    if (!figures) {
      std::printf("%-22s could not be measured here\n", name.c_str());
      return;
    }
    const auto& f = *figures;
    std::printf("%-22s %9.1f %9.1f %9.1f %9.1f %7.1f\n", name.c_str(), f.covered, f.keyboard,
                f.seenAfterDeath, f.keyboardAfterDeath, f.megabytes);
    std::fflush(stdout);
    json_[name] = {{"coveredMs", f.covered},
                   {"keyboardMs", f.keyboard},
                   {"seenAfterDeathMs", f.seenAfterDeath},
                   {"keyboardAfterDeathMs", f.keyboardAfterDeath},
                   {"pssMegabytes", f.megabytes}};
  }
  void write(const std::string& path) const { std::ofstream(path) << json_.dump(2) << '\n'; }

 private:
  nlohmann::json json_;
};

void run(const std::string& output) {
  CoverBench bench;
  Table table;
  {
    Home home;
    home.latchNight();
    auto environment = home.environment();
    environment.emplace_back("LUNEVRA_STARTED_BY_AGENT=1");  // the bench brings it back
    table.add("lunevra", bench.measure({{LUNEVRA_PROGRAM}, environment}));
  }
  table.add("i3lock", bench.measure({{"i3lock", "-n", "-c", "000000"}, {}}));
  table.add("slock", bench.measure({{"slock"}, {}}));
  table.add("xtrlock", bench.measure({{"xtrlock", "-b"}, {}}));
  table.add("xsecurelock", bench.measure({{"xsecurelock"}, {}}));
  Home home;
  home.latchNight();
  AgentSession agent(home.path(), home.environment());
  if (agent.isAvailable()) table.add("lunevra under systemd", bench.measureUnder(agent));
  table.write(output);
}

}  // namespace
}  // namespace lunevra::bench

int main(int argc, char** argv) {
  if (argc != 2) {
    std::fprintf(stderr, "usage: %s OUTPUT.json\n", argv[0]);
    return EXIT_FAILURE;
  }
  std::setvbuf(stdout, nullptr, _IOLBF, 0);
  lunevra::bench::run(argv[1]);
  return EXIT_SUCCESS;
}
