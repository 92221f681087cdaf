#include <atomic>
#include <gtest/gtest.h>
#include <iostream>
#include <optional>

#include "app/program.h"
#include "platform/linux/linux_host.h"
#include "platform/linux/linux_test_support.h"
#include "platform/linux/real_time_loop.h"
#include "platform/simulated/simulated_host.h"
#include "platform/stored_value_conversion.h"
#include "store/settings_keys.h"

namespace lunevra {
namespace {

using namespace std::chrono_literals;
namespace fs = std::filesystem;

/// One of a person's computers: real disks and clock, no screen.
class Machine {
 public:
  Machine(const fs::path& data, const fs::path& cloud)
      : paths_{.dataFolder = data,
               .cloudFolder = cloud,
               .lockFolders = {},
               .zone = {"UTC", data / "none", data / "none"}} {
    // The real time of day must not lock it.
    LinuxUserDefaultsDomains(data, log_)
        .suite(settings_key::appGroup)
        ->set(settings_key::scheduleEnabled, false);
  }

  void start() {
    host_ = std::make_unique<LinuxHost>(paths_, loop_, screen_.openPanels);
    auto host = host_->host();
    observation_ = host.notificationCenter.addObserver(SyncedStore::changedNotification,
                                                       [this] { ++changes_; });
    program_ = std::make_unique<Program>(host, screen_.desktop(), nullptr);
  }
  void kill() {
    cloudObservation_.reset();
    program_.reset();
    observation_.reset();
    host_.reset();
  }
  void restart() {
    kill();
    start();
  }

  ShutdownManager& engine() {
    auto& engine = program_->app().shutdownManager();
    // Told after the engine's store, whose announcement is on the main queue by then.
    if (!cloudObservation_)
      cloudObservation_ =
          host_->host().cloud.observeExternalChanges([this, &cloud = host_->host().cloud] {
            if (const auto value = asInteger(cloud.object("sentinel"))) heard_ = *value;
          });
    return engine;
  }
  Host host() { return host_->host(); }
  RealTimeLoop& loop() { return loop_; }
  [[nodiscard]] int changes() const { return changes_; }
  [[nodiscard]] std::int64_t heard() const { return heard_; }
  [[nodiscard]] Instant in(TimeInterval interval) { return host().clock.now() + interval; }

 private:
  LinuxPaths paths_;
  RecordingLog log_;
  RealTimeLoop loop_;
  SimulatedHost screen_;
  int changes_ = 0;
  std::atomic<std::int64_t> heard_ = 0;
  std::unique_ptr<LinuxHost> host_;
  Registration observation_;
  std::unique_ptr<Program> program_;
  Registration cloudObservation_;
};

class TwoMachines : public testing::Test {
 protected:
  TwoMachines() {
    for (auto* machine : {&here_, &there_}) {
      machine->start();
      machine->engine();
    }
    settle();
  }

  bool both(const std::function<bool()>& condition) {
    return here_.loop().runUntil([&] {
      there_.loop().turn();
      return condition();
    });
  }
  /// Once a further change has gone from each machine to the other, nothing older is on its way.
  void settle() {
    for (auto* machine : {&here_, &there_}) {
      machine->host().cloud.set("sentinel", ++sentinel_);
      auto& other = machine == &here_ ? there_ : here_;
      ASSERT_TRUE(both([&] { return other.heard() == sentinel_; }));
    }
    here_.loop().turn();
    there_.loop().turn();
  }
  /// Makes a change here that calls for `writes` announcements; the other machine hears of it, and
  /// at most as often.
  void change(int writes, const std::function<void()>& make, const std::function<bool()>& arrived) {
    const int before = here_.changes();
    const int otherBefore = there_.changes();
    make();
    const auto start = std::chrono::steady_clock::now();
    ASSERT_TRUE(both([&] { return arrived() && there_.changes() > otherBefore; }));
    slowest_ = std::max(slowest_, std::chrono::steady_clock::now() - start);
    settle();  // itself one announcement on each machine
    EXPECT_EQ(here_.changes() - before, writes + 1);
    EXPECT_LE(there_.changes() - otherBefore, writes + 1);
  }

  TemporaryFolder folder_;
  Machine here_{folder_ / "here", folder_ / "cloud"};
  Machine there_{folder_ / "there", folder_ / "cloud"};
  std::int64_t sentinel_ = 0;
  std::chrono::nanoseconds slowest_{};
};

TEST_F(TwoMachines, FollowEachOtherAndDoNotEcho) {
  const auto end = std::chrono::steady_clock::now() + soakTime();
  std::int64_t round = 0;
  do {
    const std::int64_t hour = round++ % 23;
    change(
        2, [&] { here_.engine().updateBlockStart(hour, 15); },
        [&] { return there_.engine().schedule().blockStartHour == hour; });
    change(
        2, [&] { here_.engine().updateWakeTime(hour, 15); },  // an empty window
        [&] { return there_.engine().schedule().wakeHour == hour; });
    for (const bool isEnabled : {true, false})
      change(
          1, [&] { here_.engine().setEnabled(isEnabled); },
          [&] { return there_.engine().isEnabled() == isEnabled; });
  } while (std::chrono::steady_clock::now() < end);

  if (soakTime() > 0s) {
    EXPECT_LT(slowest_, 2s);
    std::cout << round << " rounds, slowest change after "
              << std::chrono::duration<double>(slowest_).count() << " s\n";
  }

  const auto until = here_.in(24h);
  change(
      2, [&] { here_.engine().activateCommitmentLock(until); },
      [&] { return there_.engine().isLocked() && there_.engine().lockEndDate() == until; });
  there_.engine().activateCommitmentLock(there_.in(1h));
  settle();
  for (auto* machine : {&here_, &there_}) {
    machine->restart();
    EXPECT_TRUE(machine->engine().isLocked());
    EXPECT_EQ(machine->engine().lockEndDate(), until);
  }
}

/// A night that has started, and what may befall the files that hold it.
class NightOnDisk : public testing::Test {
 protected:
  void expectNight() {
    machine_.engine().evaluateSchedule();
    EXPECT_EQ(machine_.engine().activeNightLockUntil(), end_);
    EXPECT_NE(machine_.engine().currentState(), BlockingState::idle);
    EXPECT_TRUE(machine_.engine().shouldPreventQuit());
  }
  void startNight() {
    machine_.start();
    end_ = machine_.in(1h);
    machine_.host().defaults.standard().set(settings_key::activeNightLockUntil, end_);
    expectNight();
  }

  TemporaryFolder folder_;
  fs::path data_ = folder_ / "data";
  fs::path standard_ = data_ / "standard.sqlite";
  fs::path group_ = data_ / "group.com.lunevra.shared.sqlite";
  Machine machine_{data_, folder_ / "cloud"};
  Instant end_;
};

TEST_F(NightOnDisk, OneCopyOfTheLatchIsEnough) {
  startNight();
  const std::vector<std::pair<const char*, std::function<void()>>> blows{
      {"row of the standard file",
       [&] { OtherConnection(standard_).run("DELETE FROM defaults WHERE key LIKE '%Night%'"); }},
      {"row of the group's file",
       [&] { OtherConnection(group_).run("DELETE FROM defaults WHERE key LIKE '%Night%'"); }},
      {"whole standard file", [&] { fs::remove(standard_); }},
      {"damaged standard file", [&] { writeFile(standard_, std::string(9000, 'z')); }},
      {"standard file unreadable", [&] {
         fs::remove(standard_);
         fs::create_directory(standard_);
       }}};
  for (const auto& [name, strike] : blows) {
    SCOPED_TRACE(name);
    strike();
    expectNight();
    machine_.restart();
    expectNight();
    // The next latching evaluation mends only the shared copy; a person would not mend the other.
    machine_.host().defaults.standard().set(settings_key::activeNightLockUntil, end_);
  }
}

TEST_F(NightOnDisk, AFullDiskDoesNotOpenIt) {
  fs::create_directories(data_);
  onSmallDisk(data_, [&] {
    machine_.start();
    const auto filler = data_ / "filler";
    writeFile(filler, std::string(1024 * 1024, 'f'));
    end_ = machine_.in(1h);
    machine_.host().defaults.standard().set(settings_key::activeNightLockUntil, end_);
    expectNight();
    fs::remove(filler);
    machine_.host().defaults.standard().set("any", true);
    machine_.host().defaults.suite(settings_key::appGroup)->set("any", true);
    machine_.restart();
    expectNight();
    for (const auto& entry : fs::directory_iterator(data_))
      EXPECT_EQ(entry.path().string().find("corrupt"), std::string::npos) << entry.path();
  });
}

}  // namespace
}  // namespace lunevra
