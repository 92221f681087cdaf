#include "ui/settings/settings_model.h"

#include <gtest/gtest.h>

#include "platform/simulated/simulated_host.h"
#include "ui/menu_bar/menu_bar_model.h"
#include "ui/settings/time_picker.h"

namespace lunevra {
namespace {

using std::chrono_literals::operator""s;

TEST(TimePicker, NamesItsEntries) {
  const std::pair<int, const char*> hours[] = {{0, "12 AM"},  {1, "1 AM"},  {11, "11 AM"},
                                               {12, "12 PM"}, {13, "1 PM"}, {23, "11 PM"}};
  for (const auto& [hour, label] : hours) EXPECT_EQ(hourLabel(hour), label);
  EXPECT_EQ(minuteLabel(0), "00");
  EXPECT_EQ(minuteIndex(45), 3);
  EXPECT_EQ(minuteIndex(10), std::nullopt);
}

class SettingsModelTest : public testing::Test {
 protected:
  bool setTime(int hour) {
    computer.time.setWallClock(*computer.calendar.instant(
        {.year = 2026, .month = 3, .day = 14, .hour = hour, .minute = 0}));
    return true;
  }
  void beginNight() {
    setTime(22);
    engine.evaluateSchedule();
    ASSERT_EQ(engine.currentState(), BlockingState::countdown);
  }
  void commitFor(double seconds) {
    engine.activateCommitmentLock(computer.time.now() + TimeInterval{seconds});
  }
  void settle() { computer.time.drainMainQueue(); }

  SimulatedHost computer;
  bool isAfternoon = setTime(15);
  SyncedStore store{computer.host()};
  PhysicalKeyManager keyManager{computer.host()};
  FirewallHelperClient firewall{computer.host()};
  ShutdownManager engine{computer.host(), store, keyManager, firewall};
  SettingsModel model{computer.host(), engine, [] {}};
};

const Schedule lateNight{23, 45, 7, 15};

TEST_F(SettingsModelTest, WhatIsFrozenStaysBeforeTheWindowHasBeenDrawnAnew) {
  enum class By { commitment, night };
  for (const auto by : {By::commitment, By::night}) {
    SCOPED_TRACE(by == By::night ? "night" : "commitment");
    model.setEditedSchedule(lateNight);
    by == By::night ? beginNight() : commitFor(3600);
    model.saveSchedule();
    model.setEnabled(false);
    model.createKey();
    EXPECT_EQ(engine.schedule(), Schedule{});
    EXPECT_TRUE(engine.isEnabled());
    EXPECT_FALSE(computer.openPanels.wasShown());
    settle();
    EXPECT_FALSE(model.canChangeProtection());
    EXPECT_EQ(model.canEditSchedule(), by == By::night);
    computer.time.pass(std::chrono::hours(2));
  }
}

TEST_F(SettingsModelTest, CommitsForTheChosenLengthOnceConfirmed) {
  model.confirmCommitmentLock();
  EXPECT_FALSE(engine.isLocked()) << "nobody asked";
  model.setLockDuration(LockDuration::oneMonth);
  EXPECT_EQ(model.lockConfirmationMessage(),
            "Schedule, enable/disable controls, and physical-key replacement will stay frozen for "
            "1 Month. The nightly lock still releases each morning.");
  model.askToLock();
  model.confirmCommitmentLock();
  settle();
  EXPECT_EQ(engine.lockEndDate(), computer.calendar.addingDays(computer.time.now(), 30));
  EXPECT_EQ(model.bannerText(), "Editable again in 30d 0h");
  EXPECT_EQ(model.lockDuration(), LockDuration::oneMonth);
}

TEST_F(SettingsModelTest, RemainingTimeGoesOnWhileDrawn) {
  commitFor(7200);
  model.setDrawn(true);
  EXPECT_EQ(model.bannerText(), "Editable again in 2h 0m");
  computer.time.pass(65s);
  EXPECT_EQ(model.bannerText(), "Editable again in 1h 58m");
  const auto timers = computer.time.repeatingTimers();
  model.setDrawn(false);
  EXPECT_EQ(computer.time.repeatingTimers(), timers - 1);
}

TEST_F(SettingsModelTest, ACommitmentThatArrivesWhileAKeyIsToBeReplacedKeepsIt) {
  computer.keychain.setItem(Bytes(32, 1));
  engine.refreshPhysicalKeyStatus();
  model.createKey();
  ASSERT_TRUE(model.isShowingReplaceKeyConfirmation());
  commitFor(3600);
  model.confirmReplaceKey();
  EXPECT_FALSE(computer.openPanels.wasShown());
  EXPECT_EQ(engine.physicalKeyMessage(),
            "Settings are commitment-locked. Wait until the commitment ends.");
}

TEST_F(SettingsModelTest, LayersReportToTheLineOfStatus) {
  model.perform(HardnessAction::openLoginItems);
  EXPECT_EQ(computer.services.settingsOpened(), 1);
  computer.services.removeSettings();
  model.perform(HardnessAction::openLoginItems);
  EXPECT_EQ(engine.physicalKeyMessage(), "This computer has no settings page for Login Items.");
  computer.services.agent("").refuse("not permitted");
  model.perform(HardnessAction::installAgent);
  EXPECT_EQ(engine.physicalKeyMessage(), "Could not update background enforcement: not permitted");
}

TEST_F(SettingsModelTest, TheMenuRefusesWhatItsRowsNoLongerOffer) {
  int opened = 0;
  int terminated = 0;
  MenuBarModel menu(computer.time, engine,
                    {.openSettings = [&] { ++opened; }, .terminate = [&] { ++terminated; }});
  beginNight();
  menu.setEnabled(false);
  menu.openSettings();
  menu.quit();
  EXPECT_TRUE(engine.isEnabled());
  EXPECT_EQ(opened, 0);
  EXPECT_EQ(terminated, 0);
}

}  // namespace
}  // namespace lunevra
