// What the program costs by day and while it locks, and how soon six displays are covered. Takes
// X servers of its own.

#include <cstdio>
#include <nlohmann/json.hpp>
#include <xcb/xcb.h>

#include "desktop.h"
#include "host/x_server.h"
#include "measured_program.h"

namespace lunevra::bench {
namespace {

using host_test::ChildProcess;
using host_test::XServer;
using std::chrono_literals::operator""s;

constexpr int displays = 6;
constexpr int nights = 11;
constexpr auto settled = 10s;
constexpr auto watched = 60s;

std::unique_ptr<ChildProcess> start(const Home& home, const std::string& display) {
  return std::make_unique<ChildProcess>(std::vector<std::string>{LUNEVRA_PROGRAM},
                                        home.environment(display));
}

void rest(std::chrono::seconds duration) {
  std::this_thread::sleep_for(duration);
}

nlohmann::json watch(pid_t pid) {
  rest(settled);
  const auto before = Effort::of(pid);
  rest(watched);
  const auto after = Effort::of(pid);
  const double seconds = std::chrono::duration<double>(watched).count();
  return {
      {"wakeUpsPerSecond", (after.wakeUps - before.wakeUps) / seconds},
      {"processorMsPerMinute", (after.processorSeconds - before.processorSeconds) / seconds * 60e3},
      {"pssMegabytes", proportionalMegabytes(pid)}};
}

nlohmann::json byDay(const std::string& display) {
  const Home home;
  const auto program = start(home, display);
  return watch(program->pid());
}

nlohmann::json whileLocked(const std::string& display) {
  Home home;
  home.latchNight();
  const auto program = start(home, display);
  return watch(program->pid());
}

/// Counts the windows that appear beside the desktop's own.
class Arrivals {
 public:
  explicit Arrivals(const std::string& display)
      : connection_(xcb_connect(display.c_str(), nullptr)) {
    const auto root = xcb_setup_roots_iterator(xcb_get_setup(connection_.get())).data->root;
    const std::uint32_t mask = XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY;
    xcb_change_window_attributes(connection_.get(), root, XCB_CW_EVENT_MASK, &mask);
    xcb_flush(connection_.get());
  }
  /// Until so many have been mapped.
  bool wait(int count) {
    const auto end = steady_clock::now() + 20s;
    while (count > 0 && steady_clock::now() < end) {
      pollfd readable{xcb_get_file_descriptor(connection_.get()), POLLIN, 0};
      ::poll(&readable, 1, 20);
      while (auto* const event = xcb_poll_for_event(connection_.get())) {
        if ((event->response_type & 0x7F) == XCB_MAP_NOTIFY) --count;
        std::free(event);
      }
    }
    return count <= 0;
  }

 private:
  std::unique_ptr<xcb_connection_t, Disconnect> connection_;
};

/// From the moment at which another machine's change makes the program look, a night having begun,
/// until the floor covers everything and until every display has its window.
nlohmann::json sixDisplays() {
  std::vector<double> covered, mapped;
  for (int night = 0; night < nights; ++night) {
    XServer server;
    for (int i = 1; i < displays; ++i)
      server.plugIn("DUMMY" + std::to_string(i), "1024x768", std::to_string(1024 * i) + "x0");
    Desktop desktop(server.display());
    Home home;
    const auto program = start(home, server.display());
    host_test::eventually([&] { return std::filesystem::exists(home.path() / "lunevra/cloud"); });
    rest(2s);
    home.latchNight();
    Arrivals windows(server.display());
    desktop.takeKeyboard();
    home.changeElsewhere();
    if (!windows.wait(displays + 1)) return {};
    mapped.push_back(desktop.sinceTaken());
    if (!desktop.waitUntilLocked()) return {};
    covered.push_back(desktop.coveredAfter());
  }
  return {{"coveredMs", median(covered)}, {"windowsMappedMs", median(mapped)}};
}

void run(const std::string& output) {
  nlohmann::json json;
  {
    const XServer server;  // its one display is small, and what is drawn by day is nothing
    json["byDay"] = byDay(server.display());
  }
  json["locked"] = whileLocked(std::getenv("DISPLAY"));
  json["sixDisplays"] = sixDisplays();
  std::ofstream(output) << json.dump(2) << '\n';
  std::printf("%s\n", json.dump(2).c_str());
}

}  // namespace
}  // namespace lunevra::bench

int main(int argc, char** argv) {
  if (argc != 2 || std::getenv("DISPLAY") == nullptr) {
    std::fprintf(stderr, "usage: DISPLAY=... %s OUTPUT.json\n", argv[0]);
    return EXIT_FAILURE;
  }
  lunevra::bench::run(argv[1]);
  return EXIT_SUCCESS;
}
