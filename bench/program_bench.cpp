// What the program costs by day and while it locks, and how soon six displays are covered. Takes
// X servers of its own.

#include <cstdio>
#include <map>
#include <nlohmann/json.hpp>

#include "desktop.h"
#include "host/stand_in_system_bus.h"
#include "host/x_server.h"
#include "measured_program.h"
#include "platform/linux/login_manager_stand_in.h"

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

nlohmann::json byDay() {
  const XServer server;
  const Home home;
  const auto program = start(home, server.display());
  return watch(program->pid());
}

nlohmann::json whileLocked() {
  Home home;
  home.latchNight();
  const auto program = start(home, std::getenv("DISPLAY"));
  return watch(program->pid());
}

/// From the moment at which the computer wakes in a night that began asleep until the floor covers
/// everything and until every display has its window.
nlohmann::json sixDisplays() {
  setenv("TMPDIR", "/dev/shm", 1);  // what a disk takes to write the night down is not the screen's
  const host_test::StandInSystemBus systemBus;
  if (!systemBus.isAvailable()) return {};
  LoginManagerStandIn manager(systemBus.address());
  std::vector<double> covered, mapped;
  for (int night = 0; night < nights; ++night) {
    XServer server;
    for (int i = 1; i < displays; ++i)
      server.plugIn("DUMMY" + std::to_string(i), "1024x768", std::to_string(1024 * i) + "x0");
    Desktop desktop(server.display());
    Home home;
    const auto program = start(home, server.display());
    host_test::eventually([&] { return manager.isHeld("sleep/delay"); });
    rest(2s);
    home.latchNight();
    desktop.takeKeyboard();
    manager.announce("PrepareForSleep", false);
    if (!desktop.waitUntilLocked() || !desktop.waitForWindows(displays + 1)) return {};
    covered.push_back(desktop.coveredAfter());
    mapped.push_back(desktop.lastWindowAfter());
  }
  return {{"coveredMs", median(covered)}, {"windowsMappedMs", median(mapped)}};
}

void run(const std::string& output, const std::string& part) {
  const std::map<std::string, nlohmann::json (*)()> parts{
      {"byDay", byDay}, {"locked", whileLocked}, {"sixDisplays", sixDisplays}};
  nlohmann::json json;
  for (const auto& [name, measure] : parts)
    if (part.empty() || part == name) json[name] = measure();
  std::ofstream(output) << json.dump(2) << '\n';
  std::printf("%s\n", json.dump(2).c_str());
}

}  // namespace
}  // namespace lunevra::bench

int main(int argc, char** argv) {
  if (argc < 2 || std::getenv("DISPLAY") == nullptr) {
    std::fprintf(stderr, "usage: DISPLAY=... %s OUTPUT.json [PART]\n", argv[0]);
    return EXIT_FAILURE;
  }
  lunevra::bench::run(argv[1], argc > 2 ? argv[2] : "");
  return EXIT_SUCCESS;
}
