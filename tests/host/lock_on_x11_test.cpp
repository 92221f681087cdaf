#include <chrono>
#include <csignal>
#include <gtest/gtest.h>
#include <optional>

#include "host/child_process.h"
#include "host/eventually.h"
#include "host/x_probe.h"
#include "host/x_server.h"
#include "platform/linux/linux_user_defaults_domains.h"
#include "platform/linux/stderr_log.h"
#include "store/settings_keys.h"

namespace lunevra::host_test {
namespace {

using std::chrono_literals::operator""h;
using std::chrono_literals::operator""ms;
using std::chrono_literals::operator""s;

/// One person's computer: an X server, a home, and the real program.
class LockOnX11 : public testing::Test {
 protected:
  LockOnX11() { group().set(settings_key::scheduleEnabled, false); }

  UserDefaults& group() { return *defaults_.suite(settings_key::appGroup); }

  /// A night that has started and ends that far from now.
  void latchNight(std::chrono::seconds length) {
    const auto now = std::chrono::system_clock::now().time_since_epoch();
    defaults_.standard().set(settings_key::activeNightLockUntil,
                             Instant{std::chrono::duration<double>(now + length).count()});
  }

  [[nodiscard]] std::unique_ptr<ChildProcess> start(const std::string& display) const {
    return std::make_unique<ChildProcess>(
        std::vector<std::string>{LUNEVRA_PROGRAM},
        std::vector<std::string>{"DISPLAY=" + display, "HOME=" + home_.path().string(),
                                 "XDG_DATA_HOME=" + home_.path().string(),
                                 "XDG_RUNTIME_DIR=" + home_.path().string(), "TZ=UTC"});
  }
  [[nodiscard]] std::unique_ptr<ChildProcess> start() const { return start(server_.display()); }

  [[nodiscard]] bool isLocked() const { return screen_.isCovered() && screen_.isInputHeld(); }
  [[nodiscard]] bool getsLocked() const {
    return eventually([this] { return isLocked(); });
  }

  TemporaryFolder home_;
  StderrLog log_;
  LinuxUserDefaultsDomains defaults_{home_.path() / "lunevra", log_};
  XServer server_;
  XProbe screen_{server_.display()};
};

TEST_F(LockOnX11, CoversEveryDisplayAndOpensWhenTheNightIsOver) {
  server_.plugIn("DUMMY1", "1280x720", "1024x0");
  ASSERT_FALSE(screen_.isCovered());
  latchNight(4s);
  const auto program = start();
  EXPECT_TRUE(getsLocked());
  EXPECT_TRUE(screen_.hasWindowAt(0, 0, 1024, 768));
  EXPECT_TRUE(screen_.hasWindowAt(1024, 0, 1280, 720));

  EXPECT_TRUE(eventually([&] { return !screen_.isCovered(); }, 20s));
  EXPECT_TRUE(screen_.takesInput());
  EXPECT_FALSE(screen_.hasWindowAt(0, 0, 1024, 768));
  EXPECT_TRUE(program->isRunning());
  program->signal(SIGTERM);
  EXPECT_EQ(program->exitStatus(), 0) << "nothing is armed by day";
}

TEST_F(LockOnX11, FollowsDisplaysThatComeAndGo) {
  latchNight(1h);
  const auto program = start();
  ASSERT_TRUE(getsLocked());
  server_.plugIn("DUMMY1", "1280x720", "1024x0");
  EXPECT_TRUE(screen_.isCovered());
  EXPECT_TRUE(eventually([&] { return screen_.hasWindowAt(1024, 0, 1280, 720); }));
  server_.unplug("DUMMY1");
  EXPECT_TRUE(eventually([&] { return !screen_.hasWindowAt(1024, 0, 1280, 720); }));
  EXPECT_TRUE(isLocked());
  server_.unplug("DUMMY0");
  EXPECT_TRUE(eventually([&] { return !screen_.hasWindowAt(0, 0, 1024, 768); }));
  EXPECT_TRUE(isLocked());
  server_.plugIn("DUMMY0", "800x600", "0x0");
  EXPECT_TRUE(eventually([&] { return screen_.hasWindowAt(0, 0, 800, 600); }));
  EXPECT_TRUE(isLocked());
}

TEST_F(LockOnX11, StartsWithoutADisplayAndCoversTheOneThatComes) {
  server_.unplug("DUMMY0");
  latchNight(1h);
  const auto program = start();
  EXPECT_TRUE(getsLocked());
  server_.plugIn("DUMMY1", "1280x720", "0x0");
  EXPECT_TRUE(eventually([&] { return screen_.hasWindowAt(0, 0, 1280, 720); }));
  EXPECT_TRUE(isLocked());
}

TEST_F(LockOnX11, StaysInFrontOfWindowsThatRise) {
  latchNight(1h);
  const auto program = start();
  ASSERT_TRUE(getsLocked());
  for (const bool isOverrideRedirect : {false, true}) {
    const auto rival = screen_.openWindow(isOverrideRedirect);
    EXPECT_TRUE(eventually([&] { return screen_.isCovered(); }));
    screen_.raise(rival);
    EXPECT_TRUE(eventually([&] { return screen_.isCovered(); }));
    for (int i = 0; i < 2000; ++i) screen_.raise(rival);
    EXPECT_TRUE(eventually([&] { return screen_.isCovered(); }));
  }
  EXPECT_TRUE(isLocked());
}

TEST_F(LockOnX11, TakesItsPlaceBackWhenItsWindowsAreDestroyed) {
  latchNight(1h);
  const auto program = start();
  ASSERT_TRUE(getsLocked());
  const auto floor = screen_.floor();
  screen_.destroy(floor);
  EXPECT_TRUE(eventually([&] {
    const auto now = screen_.floor();
    return now != XCB_WINDOW_NONE && now != floor;
  }));
  EXPECT_TRUE(getsLocked());
}

TEST_F(LockOnX11, WaitsBlackForInputThatAnotherProgramHolds) {
  ASSERT_TRUE(screen_.takesInput());
  latchNight(1h);
  const auto program = start();
  EXPECT_TRUE(eventually([&] { return screen_.isCovered(); }));
  screen_.release();
  EXPECT_TRUE(eventually([&] { return screen_.isInputHeld(); }));
}

TEST_F(LockOnX11, RefusesToEndDuringTheNightAndComesBackWhenKilled) {
  latchNight(1h);
  auto program = start();
  ASSERT_TRUE(getsLocked());
  for (const int signal : {SIGTERM, SIGINT, SIGHUP}) program->signal(signal);
  EXPECT_FALSE(program->exitStatus(500ms));
  EXPECT_TRUE(isLocked());

  program->signal(SIGKILL);
  EXPECT_TRUE(program->exitStatus());
  program = start();
  EXPECT_TRUE(getsLocked());
  EXPECT_EQ(start()->exitStatus(), 0) << "a second start";
  EXPECT_TRUE(program->isRunning());
}

TEST_F(LockOnX11, FailsWithoutAnXServerSoThatItIsStartedAgain) {
  latchNight(1h);
  EXPECT_EQ(start(":4095")->exitStatus(), 1);
  const auto program = start();
  ASSERT_TRUE(getsLocked());
  server_.kill();
  const auto status = program->exitStatus();
  ASSERT_TRUE(status);
  EXPECT_NE(*status, 0);
}

}  // namespace
}  // namespace lunevra::host_test
