#include "ui/lock_screen/lock_screen_model.h"

#include <gtest/gtest.h>
#include <set>

#include "platform/simulated/simulated_host.h"

namespace lunevra {
namespace {

using std::chrono_literals::operator""s;
using std::chrono_literals::operator""min;

class LockScreenModelTest : public testing::Test {
 protected:
  Instant evening(int hour, int minute) {
    return *computer.calendar.instant(
        {.year = 2026, .month = 3, .day = 14, .hour = hour, .minute = minute});
  }
  void setTime(int hour, int minute) {
    computer.time.setWallClock(evening(hour, minute));
    engine.evaluateSchedule();
    computer.time.drainMainQueue();
  }

  SimulatedHost computer;
  bool isAfternoon = [this] {
    computer.time.setWallClock(evening(15, 0));
    return true;
  }();
  SyncedStore store{computer.host()};
  PhysicalKeyManager keyManager{computer.host()};
  FirewallHelperClient firewall{computer.host()};
  ShutdownManager engine{computer.host(), store, keyManager, firewall};
  SimulatedTime ticks;
  LockScreenModel model{computer.host(), ticks, engine};
};

TEST_F(LockScreenModelTest, FollowsTheNight) {
  EXPECT_EQ(model.screen(), PhaseScreen::none);
  setTime(22, 0);
  EXPECT_EQ(model.screen(), PhaseScreen::countdown);
  EXPECT_EQ(model.countdownValue(), 3);
  computer.time.pass(1s);
  EXPECT_EQ(model.countdownValue(), 2);
  EXPECT_FALSE(model.currentQuote());
  computer.time.pass(2s);
  EXPECT_EQ(model.screen(), PhaseScreen::ambient);
  EXPECT_TRUE(model.currentQuote());
  EXPECT_EQ(model.lockedUntilText(), "Locked until 6:00 AM");
  EXPECT_EQ(model.hintText(), "No early release is configured");
  EXPECT_FALSE(model.commitmentText());
  computer.time.pass(std::chrono::hours(8));
  EXPECT_EQ(model.screen(), PhaseScreen::none);
}

TEST_F(LockScreenModelTest, ReadsOnceATurnAfterTheChange) {
  std::vector<PhaseScreen> seen;
  const auto observation = model.observeChanges([&] { seen.push_back(model.screen()); });
  computer.time.setWallClock(evening(22, 0));
  engine.evaluateSchedule();
  EXPECT_TRUE(seen.empty());
  computer.time.drainMainQueue();
  EXPECT_EQ(seen, std::vector{PhaseScreen::countdown});
}

TEST_F(LockScreenModelTest, TellsOfKeyAndCommitment) {
  computer.keychain.setItem(Bytes(32, 1));
  engine.refreshPhysicalKeyStatus();
  engine.activateCommitmentLock(evening(15, 0) + TimeInterval{13 * 3600.0});
  setTime(22, 0);
  computer.time.pass(3s);
  EXPECT_EQ(model.hintText(), "Insert the trusted Lunevra USB key for an emergency release");
  EXPECT_EQ(model.commitmentText(), "Settings locked for 5h 59m");
}

TEST_F(LockScreenModelTest, TheClockShowsTheDigitsOfADay) {
  ticks.setWallClock(evening(0, 0));
  setTime(23, 0);
  computer.time.pass(3s);
  model.setDrawn(true);
  struct Case {
    int hour, minute;
    const char* text;
  };
  constexpr Case cases[] = {{23, 59, "23:59"}, {0, 5, "00:05"}, {3, 40, "03:40"}};
  for (const auto& c : cases) {
    computer.time.setWallClock(evening(c.hour, c.minute));
    ticks.pass(1s);
    EXPECT_EQ(model.clockText(), c.text);
  }
}

TEST_F(LockScreenModelTest, TicksOnlyWhileTheAmbientScreenIsDrawn) {
  EXPECT_EQ(ticks.repeatingTimers(), 0U);
  model.setDrawn(true);
  EXPECT_EQ(ticks.repeatingTimers(), 0U);
  setTime(22, 0);
  EXPECT_EQ(ticks.repeatingTimers(), 0U);
  computer.time.pass(3s);
  EXPECT_EQ(ticks.repeatingTimers(), 2U);
  model.setDrawn(false);
  EXPECT_EQ(ticks.repeatingTimers(), 0U);
}

TEST_F(LockScreenModelTest, AnotherQuoteEveryTwelveSeconds) {
  setTime(22, 0);
  computer.time.pass(3s);
  model.setDrawn(true);
  int changes = 0;
  std::set<std::string> quotes;
  const auto observation = model.observeChanges([&] {
    ++changes;
    quotes.insert(model.currentQuote()->id);
  });
  ticks.pass(11s);
  EXPECT_EQ(changes, 0);
  ticks.pass(10min - 11s);
  EXPECT_GT(changes, 40);
  EXPECT_LE(changes, 50);
  EXPECT_GT(quotes.size(), 20U);
}

}  // namespace
}  // namespace lunevra
