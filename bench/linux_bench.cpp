#include <benchmark/benchmark.h>
#include <cstdlib>
#include <filesystem>
#include <optional>

#include "app/program.h"
#include "platform/linux/linux_host.h"
#include "platform/simulated/simulated_host.h"
#include "store/settings_keys.h"

namespace lunevra {
namespace {

/// The engine over this computer's own clock, zone, stores and drives, with a key configured and
/// the fingerprint in a file. Its timers do not run.
class OnThisComputer {
 public:
  OnThisComputer() {
    auto host = linux_->host();
    // The real time of day must not lock it.
    host.defaults.suite(settings_key::appGroup)->set(settings_key::scheduleEnabled, false);
    keyManager_.emplace(host).storeFingerprint(Bytes(32));
    store_.emplace(host);
    firewall_.emplace(host);
    engine_.emplace(host, *store_, *keyManager_, *firewall_);
    screen_.time.drainMainQueue();
  }
  ~OnThisComputer() {
    engine_.reset();
    linux_.reset();
    std::filesystem::remove_all(folder_);
  }
  OnThisComputer(const OnThisComputer&) = delete;
  OnThisComputer& operator=(const OnThisComputer&) = delete;

  ShutdownManager& engine() { return *engine_; }
  Host host() { return linux_->host(); }

 private:
  static std::filesystem::path makeFolder() {
    std::string folder = std::filesystem::temp_directory_path() / "lunevra-bench-XXXXXX";
    if (::mkdtemp(folder.data()) == nullptr) std::abort();
    return folder;
  }

  std::filesystem::path folder_ = makeFolder();
  SimulatedHost screen_;
  std::optional<LinuxHost> linux_{
      std::in_place,
      LinuxPaths{
          .dataFolder = folder_, .cloudFolder = folder_ / "cloud", .lockFolders = {}, .zone = {}},
      screen_.time, screen_.openPanels};
  std::optional<PhysicalKeyManager> keyManager_;
  std::optional<SyncedStore> store_;
  std::optional<FirewallHelperClient> firewall_;
  std::optional<ShutdownManager> engine_;
};

void readFromSqlite(benchmark::State& state) {
  OnThisComputer computer;
  auto& standard = computer.host().defaults.standard();
  for ([[maybe_unused]] auto _ : state)
    benchmark::DoNotOptimize(standard.integer(settings_key::wakeHour));
}
BENCHMARK(readFromSqlite);

void evaluateOnThisComputer(benchmark::State& state) {
  OnThisComputer computer;
  for ([[maybe_unused]] auto _ : state) {
    computer.engine().evaluateSchedule();
    computer.engine().refreshCommitmentState();
  }
}
BENCHMARK(evaluateOnThisComputer);

void pollOnThisComputer(benchmark::State& state) {
  OnThisComputer computer;
  for ([[maybe_unused]] auto _ : state) computer.engine().pollPhysicalKey();
}
BENCHMARK(pollOnThisComputer);

}  // namespace
}  // namespace lunevra
