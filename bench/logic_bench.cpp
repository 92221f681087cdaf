#include <benchmark/benchmark.h>
#include <string>

#include "app/program.h"
#include "platform/simulated/simulated_host.h"

namespace lunevra {
namespace {

// The program by day, on a simulated computer.
class Daytime {
 public:
  Daytime() {
    computer_.time.setWallClock(Instant{1795348800.0});
    computer_.displays.set("Built-in", {0, 0, 1440, 900});
    computer_.application.beginProcess();
    program_.app().launch();
    program_.app().windowGroupContentAppeared();
    computer_.time.drainMainQueue();
  }

  ShutdownManager& engine() { return program_.app().shutdownManager(); }
  SimulatedTime& time() { return computer_.time; }

 private:
  SimulatedHost computer_;
  Program program_{computer_.host(), computer_.desktop(), [](ShutdownManager&) { return nullptr; }};
};

void evaluateSchedule(benchmark::State& state) {
  Daytime daytime;
  for ([[maybe_unused]] auto _ : state) daytime.engine().evaluateSchedule();
}
BENCHMARK(evaluateSchedule);

void pollPhysicalKeyWithoutFingerprint(benchmark::State& state) {
  Daytime daytime;
  for ([[maybe_unused]] auto _ : state) daytime.engine().pollPhysicalKey();
}
BENCHMARK(pollPhysicalKeyWithoutFingerprint);

// One scan of drives that all count and carry a file that does not match.
void scanVolumes(benchmark::State& state) {
  SimulatedHost computer;
  computer.keychain.setItem(Bytes(32));
  for (std::int64_t number = 0; number < state.range(0); ++number) {
    SimulatedVolumes::Volume drive;
    drive.name = std::to_string(number);
    drive.path = "/Volumes/" + drive.name;
    computer.volumes.attach(drive);
    computer.volumes.putFile(drive.name, std::string(PhysicalKeyManager::keyFileName),
                             R"({"version":1,"identifier":"","secret":"AAAA"})");
  }
  const PhysicalKeyManager keys(computer.host());
  for ([[maybe_unused]] auto _ : state) benchmark::DoNotOptimize(keys.findMountedMatchingKey());
  state.counters["perVolume"] = benchmark::Counter(
      static_cast<double>(state.range(0)),
      benchmark::Counter::kIsIterationInvariantRate | benchmark::Counter::kInvert);
}
BENCHMARK(scanVolumes)->RangeMultiplier(10)->Range(1, 1000);

// The largest file that is read, full of small things.
void readOddKeyFile(benchmark::State& state) {
  std::string contents = "{\"x\":[{}";
  while (contents.size() < (1U << 20U)) contents += ",{\"a\":[]}";
  contents += "]}";
  for ([[maybe_unused]] auto _ : state)
    benchmark::DoNotOptimize(PhysicalKeyManager::verifyKeyFile(contents, Bytes(32)));
}
BENCHMARK(readOddKeyFile)->Unit(benchmark::kMillisecond);

void oneDayAndNight(benchmark::State& state) {
  Daytime daytime;
  for ([[maybe_unused]] auto _ : state) daytime.time().pass(std::chrono::hours{24});
}
BENCHMARK(oneDayAndNight)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace lunevra
