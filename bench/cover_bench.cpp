// How long a screen stays open after the program's start and after its death, beside the lockers
// that are installed. Needs an X display without a window manager, as under xvfb-run.

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <nlohmann/json.hpp>
#include <optional>
#include <poll.h>
#include <vector>
#include <xcb/xcb.h>

#include "host/agent_session.h"
#include "host/child_process.h"
#include "host/temporary_folder.h"
#include "platform/linux/linux_user_defaults_domains.h"
#include "platform/linux/stderr_log.h"
#include "store/settings_keys.h"

namespace lunevra {
namespace {

using host_test::AgentSession;
using host_test::ChildProcess;
using host_test::TemporaryFolder;
using std::chrono::steady_clock;
using Milliseconds = std::chrono::duration<double, std::milli>;

constexpr int starts = 21;
constexpr int deaths = 11;
constexpr std::uint32_t desktopColor = 0x3366CC;

struct Disconnect {
  void operator()(xcb_connection_t* connection) const { xcb_disconnect(connection); }
};

/// A desktop that a person works on: one window over the whole screen, which has the keyboard.
class Desktop {
 public:
  Desktop() {
    auto* const x = connection_.get();
    const std::uint32_t values[] = {desktopColor, 1,
                                    XCB_EVENT_MASK_VISIBILITY_CHANGE | XCB_EVENT_MASK_FOCUS_CHANGE};
    xcb_create_window(x, XCB_COPY_FROM_PARENT, window_, screen_->root, 0, 0,
                      screen_->width_in_pixels, screen_->height_in_pixels, 0,
                      XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT,
                      XCB_CW_BACK_PIXEL | XCB_CW_OVERRIDE_REDIRECT | XCB_CW_EVENT_MASK, values);
    xcb_map_window(x, window_);
    takeKeyboard();
    wait(std::chrono::milliseconds(100), [] { return false; });
  }

  /// From here on; what happened before is forgotten.
  void takeKeyboard() {
    xcb_set_input_focus(connection_.get(), XCB_INPUT_FOCUS_POINTER_ROOT, window_, XCB_CURRENT_TIME);
    xcb_flush(connection_.get());
    begin_ = steady_clock::now();
    keyboardTaken_.reset();
    seen_ = Milliseconds(0);
  }

  bool waitUntilLocked() {
    return wait(std::chrono::seconds(10), [this] { return covered_ && keyboardTaken_; });
  }
  /// Takes away what a killed locker has left.
  bool waitUntilOpen() {
    return wait(std::chrono::seconds(10), [this] {
      xcb_kill_client(connection_.get(), XCB_KILL_ALL_TEMPORARY);
      xcb_flush(connection_.get());
      return !covered_;
    });
  }
  void rest(std::chrono::milliseconds duration) {
    wait(duration, [] { return false; });
  }

  [[nodiscard]] double coveredAfter() const { return Milliseconds(*covered_ - begin_).count(); }
  [[nodiscard]] double keyboardTakenAfter() const {
    return Milliseconds(*keyboardTaken_ - begin_).count();
  }
  /// For how long any of it was to be seen.
  [[nodiscard]] double seen() const { return seen_.count(); }

 private:
  template <class Condition>
  bool wait(std::chrono::milliseconds limit, Condition isMet) {
    const auto end = steady_clock::now() + limit;
    while (steady_clock::now() < end) {
      while (auto* const event = xcb_poll_for_event(connection_.get())) {
        note(*event);
        std::free(event);
      }
      if (isMet()) return true;
      pollfd readable{xcb_get_file_descriptor(connection_.get()), POLLIN, 0};
      ::poll(&readable, 1, 20);
    }
    return isMet();
  }

  void note(const xcb_generic_event_t& event) {
    const auto now = steady_clock::now();
    if (event.response_type == XCB_FOCUS_OUT && !keyboardTaken_) keyboardTaken_ = now;
    if (event.response_type != XCB_VISIBILITY_NOTIFY) return;
    const auto& visibility = reinterpret_cast<const xcb_visibility_notify_event_t&>(event);
    if (visibility.state != XCB_VISIBILITY_FULLY_OBSCURED) {
      if (covered_) openSince_ = now;
      covered_.reset();
    } else if (!covered_) {
      covered_ = now;
      seen_ += now - std::max(openSince_, begin_);
    }
  }

  std::unique_ptr<xcb_connection_t, Disconnect> connection_{xcb_connect(nullptr, nullptr)};
  const xcb_screen_t* screen_ = xcb_setup_roots_iterator(xcb_get_setup(connection_.get())).data;
  xcb_window_t window_ = xcb_generate_id(connection_.get());
  steady_clock::time_point begin_;
  std::optional<steady_clock::time_point> covered_;
  std::optional<steady_clock::time_point> keyboardTaken_;
  steady_clock::time_point openSince_;
  Milliseconds seen_{0};
};

struct Locker {
  std::vector<std::string> command;
  std::vector<std::string> environment;
};

/// Medians in milliseconds, and the memory of the locked program.
struct Figures {
  double covered = 0, keyboard = 0, seenAfterDeath = 0, keyboardAfterDeath = 0;
  double megabytes = 0;
};

double median(std::vector<double> values) {
  if (values.empty()) return 0;
  const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
  std::nth_element(values.begin(), middle, values.end());
  return *middle;
}

double proportionalMegabytes(pid_t pid) {
  std::ifstream file("/proc/" + std::to_string(pid) + "/smaps_rollup");
  for (std::string word; file >> word;)
    if (double kilobytes = 0; word == "Pss:" && file >> kilobytes) return kilobytes / 1024;
  return 0;
}

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

void latchNight(const std::filesystem::path& home) {
  StderrLog log;
  LinuxUserDefaultsDomains defaults(home / "lunevra", log);
  const auto end = std::chrono::system_clock::now().time_since_epoch() + std::chrono::hours(10);
  defaults.standard().set(settings_key::activeNightLockUntil,
                          Instant{std::chrono::duration<double>(end).count()});
  defaults.standard().set(settings_key::enforcementAgentStatus, std::int64_t{1});
}

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

/// A person's home with a night that has begun.
class Home {
 public:
  Home() { latchNight(folder_.path()); }
  [[nodiscard]] const std::filesystem::path& path() const { return folder_.path(); }
  [[nodiscard]] std::vector<std::string> environment() const {
    const std::string path = folder_.path();
    return {"HOME=" + path, "XDG_DATA_HOME=" + path, "XDG_RUNTIME_DIR=" + path, "TZ=UTC"};
  }

 private:
  TemporaryFolder folder_;
};

void run(const std::string& output) {
  CoverBench bench;
  Table table;
  {
    const Home home;
    auto environment = home.environment();
    environment.emplace_back("LUNEVRA_STARTED_BY_AGENT=1");  // the bench brings it back
    table.add("lunevra", bench.measure({{LUNEVRA_PROGRAM}, environment}));
  }
  table.add("i3lock", bench.measure({{"i3lock", "-n", "-c", "000000"}, {}}));
  table.add("slock", bench.measure({{"slock"}, {}}));
  table.add("xtrlock", bench.measure({{"xtrlock", "-b"}, {}}));
  table.add("xsecurelock", bench.measure({{"xsecurelock"}, {}}));
  const Home home;
  AgentSession agent(home.path(), home.environment());
  if (agent.isAvailable()) table.add("lunevra under systemd", bench.measureUnder(agent));
  table.write(output);
}

}  // namespace
}  // namespace lunevra

int main(int argc, char** argv) {
  if (argc != 2) {
    std::fprintf(stderr, "usage: %s OUTPUT.json\n", argv[0]);
    return EXIT_FAILURE;
  }
  std::setvbuf(stdout, nullptr, _IOLBF, 0);
  lunevra::run(argv[1]);
  return EXIT_SUCCESS;
}
