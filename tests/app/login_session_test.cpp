#include "platform/linux/login_session.h"

#include <gtest/gtest.h>

#include "app/program.h"
#include "platform/linux/login_manager_stand_in.h"
#include "platform/linux/private_bus.h"
#include "platform/linux/real_time_loop.h"
#include "platform/simulated/simulated_host.h"
#include "platform/workspace.h"

namespace lunevra {
namespace {

using namespace std::chrono_literals;

/// The program on a simulated computer whose login manager is a real one's stand-in on a real bus.
class LoginSessionTest : public testing::Test {
 protected:
  LoginSessionTest() {
    computer_.displays.set("Built-in", {0, 0, 1440, 900});
    computer_.application.beginProcess();
    setClock(21, 0);
    program_.app().launch();
    program_.app().windowGroupContentAppeared();
    computer_.time.drainMainQueue();
    EXPECT_TRUE(runsUntil([this] { return manager_->isHeld("sleep/delay"); }));
  }

  void setClock(int hour, int minute) {
    computer_.time.setWallClock(
        *computer_.calendar.instant({2026, 11, hour < 12 ? 23 : 22, hour, minute, 0}));
  }
  bool runsUntil(const std::function<bool()>& condition) { return loop_.runUntil(condition); }
  bool isCovered() {
    computer_.time.drainMainQueue();
    return program_.app().shutdownManager().currentState() != BlockingState::idle &&
           computer_.application.presentationOptions() != PresentationOptions::standard;
  }
  AppDelegate& delegate() { return program_.app().appDelegate(); }

  PrivateBus bus_;
  std::unique_ptr<LoginManagerStandIn> manager_ =
      std::make_unique<LoginManagerStandIn>(bus_.address());
  SimulatedHost computer_;
  Program program_{computer_.host(), computer_.desktop(), [](auto&) { return nullptr; }};
  RealTimeLoop loop_;
  LoginSession session_{bus_.address(), loop_, computer_.workspaceNotifications,
                        [this] { delegate().systemWillSleep(); }};
};

TEST_F(LoginSessionTest, SleepWaitsForACoverThatIsDueAndWakingFindsTheRightPhase) {
  manager_->announce("PrepareForSleep", true);
  ASSERT_TRUE(runsUntil([&] { return !manager_->isHeld("sleep/delay"); }));
  EXPECT_FALSE(isCovered());
  setClock(23, 0);  // bedtime passes asleep
  manager_->announce("PrepareForSleep", false);
  ASSERT_TRUE(runsUntil([&] { return isCovered() && manager_->isHeld("sleep/delay"); }));

  setClock(6, 0);
  manager_->announce("PrepareForSleep", false);
  ASSERT_TRUE(runsUntil([&] { return !isCovered(); }));
  setClock(22, 0);
  bool wasCoveredFirst = false;
  manager_->announce("PrepareForSleep", true);
  ASSERT_TRUE(runsUntil([&] {
    wasCoveredFirst = isCovered();
    return !manager_->isHeld("sleep/delay");
  }));
  EXPECT_TRUE(wasCoveredFirst);
}

TEST_F(LoginSessionTest, AnnouncedShutdownIsAcceptedAlsoDuringALock) {
  setClock(23, 0);
  manager_->announce("PrepareForSleep", false);
  ASSERT_TRUE(runsUntil([&] { return isCovered(); }));
  EXPECT_EQ(delegate().applicationShouldTerminate(), TerminateReply::cancel);
  manager_->announce("PrepareForShutdown", true);
  EXPECT_TRUE(
      runsUntil([&] { return delegate().applicationShouldTerminate() == TerminateReply::now; }));
  EXPECT_TRUE(isCovered());
}

TEST_F(LoginSessionTest, InhibitorsOutliveTheLoginManagerAndEndWhenToldTo) {
  int activations = 0;
  const auto observation = computer_.workspaceNotifications.addObserver(
      workspace_notification::sessionDidBecomeActive, [&] { ++activations; });
  session_.setTerminationInhibited(true);
  EXPECT_TRUE(runsUntil([&] { return manager_->isHeld("shutdown/block"); }));
  manager_.reset();
  manager_ = std::make_unique<LoginManagerStandIn>(bus_.address());
  EXPECT_TRUE(runsUntil(
      [&] { return manager_->isHeld("shutdown/block") && manager_->isHeld("sleep/delay"); }));
  session_.setTerminationInhibited(false);
  EXPECT_TRUE(runsUntil([&] { return !manager_->isHeld("shutdown/block"); }));
  manager_->activateSession();
  EXPECT_TRUE(runsUntil([&] { return activations > 0; }));
}

TEST(LoginSessionWithoutABus, CostsNothingButTheNews) {
  const HungBus hung;
  SimulatedHost computer;
  for (const auto& address : {std::string("unix:path=/nowhere"), hung.address()}) {
    RealTimeLoop loop;
    LoginSession session(address, loop, computer.workspaceNotifications, [] {});
    session.setTerminationInhibited(true);
    loop.turn();
  }
}

}  // namespace
}  // namespace lunevra
