#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <limits>
#include <optional>
#include <vector>

#include "app/program.h"
#include "engine/commitment.h"
#include "physical_key/physical_key_manager.h"
#include "platform/simulated/simulated_host.h"

namespace lunevra {
namespace {

using namespace std::chrono_literals;

TEST(Evaluation, EverySituationHasOneOutcome) {
  const auto idle = BlockingState::idle;
  const auto busy = BlockingState::blocking;
  using Step = EvaluationStep;
  struct Case {
    NightSituation now;
    Evaluation outcome;
  };
  for (const bool inWindow : {false, true})
    for (const bool enabled : {false, true})
      for (const bool latched : {false, true}) {
        EXPECT_EQ(evaluate({true, latched, inWindow, enabled, idle}),
                  (Evaluation{false, Step::none}));
        EXPECT_EQ(evaluate({true, latched, inWindow, enabled, busy}),
                  (Evaluation{false, Step::endLockForOverride}));
        if (!latched) continue;
        EXPECT_EQ(evaluate({false, true, inWindow, enabled, idle}),
                  (Evaluation{true, Step::beginCountdown}));
        EXPECT_EQ(evaluate({false, true, inWindow, enabled, busy}), (Evaluation{true, Step::none}));
      }
  const Case unlatched[] = {
      {{false, false, true, true, idle}, {true, Step::latchNightAndBeginCountdown}},
      {{false, false, true, true, busy}, {true, Step::latchNight}},
      {{false, false, true, false, idle}, {true, Step::none}},
      {{false, false, true, false, busy}, {true, Step::returnToIdle}},
      {{false, false, false, true, idle}, {false, Step::none}},
      {{false, false, false, true, busy}, {false, Step::returnToIdle}},
  };
  for (const auto& [now, outcome] : unlatched) EXPECT_EQ(evaluate(now), outcome);
}

TEST(Schedule, WindowAndWakeTime) {
  struct Case {
    Schedule schedule;
    DateComponents now;
    bool isInside;
    DateComponents wake;
  };
  const Schedule night{22, 0, 6, 0};
  const Schedule early{1, 0, 5, 0};
  const Schedule empty{6, 0, 6, 0};
  const Case cases[] = {
      {night, {2026, 11, 22, 21, 59, 59}, false, {2026, 11, 23, 6, 0, 0}},
      {night, {2026, 11, 22, 22, 0, 59}, true, {2026, 11, 23, 6, 0, 0}},
      {night, {2026, 12, 31, 23, 0, 0}, true, {2027, 1, 1, 6, 0, 0}},
      {night, {2026, 11, 23, 5, 59, 59}, true, {2026, 11, 23, 6, 0, 0}},
      {night, {2026, 11, 23, 6, 0, 0}, false, {2026, 11, 24, 6, 0, 0}},
      {early, {2026, 11, 23, 0, 30, 0}, false, {2026, 11, 23, 5, 0, 0}},
      {early, {2026, 11, 23, 1, 0, 0}, true, {2026, 11, 23, 5, 0, 0}},
      {early, {2026, 11, 23, 5, 0, 0}, false, {2026, 11, 24, 5, 0, 0}},
      {empty, {2026, 11, 23, 6, 0, 0}, false, {2026, 11, 24, 6, 0, 0}},
  };
  const SimulatedCalendar calendar;
  for (const auto& [schedule, now, isInside, wake] : cases) {
    const auto instant = *calendar.instant(now);
    EXPECT_EQ(isWithinBlockingWindow(schedule, calendar, instant), isInside) << now.hour;
    EXPECT_EQ(nextWakeDate(schedule, calendar, instant), *calendar.instant(wake)) << now.hour;
  }
  const Instant beyond{1e300};
  EXPECT_FALSE(isWithinBlockingWindow(night, calendar, beyond));
  EXPECT_EQ(nextWakeDate(night, calendar, beyond), beyond);
}

TEST(Texts, TimesAndRemainingCommitment) {
  EXPECT_EQ(formatTime12Hour(0, 0), "12:00 AM");
  EXPECT_EQ(formatTime12Hour(12, 0), "12:00 PM");
  EXPECT_EQ(formatTime12Hour(13, 7), "1:07 PM");
  EXPECT_EQ(formatTime12Hour(23, 59), "11:59 PM");
  const std::pair<double, const char*> remaining[] = {
      {536400 + 600, "6d 5h"},
      {90000, "1d 1h"},
      {89999.9, "24h 59m"},
      {86400, "24h 0m"},
      {3600, "1h 0m"},
      {3599, "59m"},
      {30, "0m"},
      {0, "Expired"},
      {-5, "Expired"},
      {1e300, "11574074074d 1h"},
  };
  for (const auto& [seconds, text] : remaining)
    EXPECT_EQ(commitmentRemainingText(Instant{seconds}, Instant{0}), text) << seconds;
  EXPECT_EQ(commitmentRemainingText(std::nullopt, Instant{0}), "");
}

class Engine : public testing::Test {
 protected:
  Engine() { computer_.time.setWallClock(*computer_.calendar.instant({2026, 11, 22, 21, 59, 58})); }

  ShutdownManager& launch() {
    program_.emplace(computer_.host(), computer_.desktop(),
                     [](ShutdownManager&) { return nullptr; });
    return program_->app().shutdownManager();
  }

  SimulatedHost computer_;
  std::optional<Program> program_;
};

TEST_F(Engine, ObserversAreToldBeforeAndTheNotificationComesAfterTheChange) {
  auto& engine = launch();
  std::vector<BlockingState> before;
  std::vector<BlockingState> after;
  const auto observation = engine.observeChanges([&] { before.push_back(engine.currentState()); });
  const auto notification = computer_.notificationCenter.addObserver(
      blockingStateChangedNotification, [&] { after.push_back(engine.currentState()); });
  computer_.time.pass(5s);
  ASSERT_FALSE(before.empty());
  EXPECT_EQ(before.back(), BlockingState::idle);
  EXPECT_EQ(after, std::vector{BlockingState::countdown});
}

TEST_F(Engine, DeferredWorkIsHarmlessOnceItIsGone) {
  launch();
  computer_.cloud.setFromElsewhere("wakeHour", std::int64_t{7});
  program_->syncedStore().notifyChanged();
  program_.reset();
  computer_.time.pass(10s);
  EXPECT_EQ(computer_.time.repeatingTimers(), 0U);
}

TEST_F(Engine, APanelLeftOpenMakesNoKeyOnceTheNightOrACommitmentHasBegun) {
  auto& engine = launch();
  SimulatedVolumes::Volume drive;
  drive.name = "USB";
  drive.path = "/Volumes/USB";
  computer_.volumes.attach(drive);
  computer_.openPanels.answerNextWith("/Volumes/USB");
  engine.createPhysicalKey();
  engine.activateCommitmentLock(computer_.time.now() + TimeInterval(3600));
  computer_.time.drainMainQueue();
  EXPECT_EQ(engine.physicalKeyMessage(),
            "Settings are commitment-locked. Wait until the commitment ends.");

  computer_.time.setWallClock(*computer_.calendar.instant({2026, 11, 23, 21, 59, 58}));
  engine.refreshCommitmentState();
  engine.createPhysicalKey();
  computer_.time.setWallClock(*computer_.calendar.instant({2026, 11, 23, 22, 0, 0}));
  engine.evaluateSchedule();
  computer_.time.drainMainQueue();
  EXPECT_EQ(engine.physicalKeyMessage(),
            "The physical key cannot be changed during an active lock.");
  EXPECT_EQ(computer_.keychain.find("", ""), std::nullopt);
}

TEST_F(Engine, AGenerationAtItsMaximumStaysThere) {
  const auto greatest = std::numeric_limits<std::int64_t>::max();
  computer_.cloud.setFromElsewhere("activeUnlockGeneration", greatest);
  launch();
  program_->syncedStore().recordActiveUnlock(Instant{1});
  EXPECT_EQ(program_->syncedStore().integer("activeUnlockGeneration", 0), greatest);
  EXPECT_EQ(computer_.log.lines().size(), 1U);
}

struct AskedKeychain : Keychain {
  MOCK_METHOD(std::optional<Bytes>, find, (std::string_view, std::string_view), (const, override));
  MOCK_METHOD(std::int32_t, remove, (std::string_view, std::string_view), (override));
  MOCK_METHOD(std::int32_t, add, (std::string_view, std::string_view, const Bytes&), (override));
};

struct AskedVolumes : VolumeSource {
  MOCK_METHOD(std::vector<std::string>, mountedVolumes, (), (const, override));
  MOCK_METHOD(std::optional<VolumeTraits>, traits, (const std::string&), (const, override));
  MOCK_METHOD(std::optional<bool>, isReadOnly, (const std::string&), (const, override));
  MOCK_METHOD(std::optional<std::string>, localizedName, (const std::string&), (const, override));
  MOCK_METHOD(std::optional<std::string>, readFile, (const std::string&), (const, override));
  MOCK_METHOD(void, writeFileAtomically, (const std::string&, const std::string&), (override));
  MOCK_METHOD(void, setHidden, (const std::string&), (override));
};

TEST_F(Engine, ALookForTheKeyAsksForNothingMoreThanItNeeds) {
  using testing::Return;
  testing::StrictMock<AskedKeychain> keychain;
  testing::StrictMock<AskedVolumes> volumes;
  const PhysicalKeyManager keys(
      {computer_.time, computer_.calendar, computer_.time, computer_.notificationCenter,
       computer_.defaults, computer_.cloud, computer_.log, computer_.random, keychain, volumes,
       computer_.services, computer_.firewallHelper, computer_.openPanels});
  EXPECT_CALL(keychain, find).WillOnce(Return(std::nullopt)).WillOnce(Return(Bytes(32)));
  EXPECT_EQ(keys.findMountedMatchingKey(), std::nullopt);

  EXPECT_CALL(volumes, mountedVolumes).WillOnce(Return(std::vector<std::string>{"/", "/A", "/B"}));
  EXPECT_CALL(volumes, traits("/")).WillOnce(Return(VolumeTraits{true, true, true}));
  for (const std::string drive : {"/A", "/B"}) {
    EXPECT_CALL(volumes, traits(drive)).WillOnce(Return(VolumeTraits{false, true, false}));
    EXPECT_CALL(volumes, readFile(drive + "/.lunevra-emergency-key")).WillOnce(Return("{}"));
  }
  EXPECT_EQ(keys.findMountedMatchingKey(), std::nullopt);
}

}  // namespace
}  // namespace lunevra
