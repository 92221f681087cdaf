#include "host/lock_on_x11.h"

#include <csignal>
#include <initializer_list>
#include <iostream>
#include <optional>
#include <random>
#include <set>

namespace lunevra::host_test {
namespace {

using std::chrono_literals::operator""h;
using std::chrono_literals::operator""ms;
using std::chrono_literals::operator""ns;
using std::chrono_literals::operator""s;
using std::chrono::steady_clock;

/// What a person opens by day where there is no tray, on the right one of two displays: the program
/// once more for its menu, the settings, and the chooser of a drive.
class DayOnX11 : public LockOnX11 {
 protected:
  bool openEverything() {
    screen_.clickAt(1100, 700);
    const bool isUp = eventually([this] {
      return defaults_.standard().object(settings_key::enforcementAgentStatus).has_value();
    });
    return isUp && opensMenuOver(0) && closesMenu() && opensMenuOver(0) &&
           opensAt(1404, 656, 1539 + 60, 240 + 200) && opensAt(1404, 460, 1404 + 200, 32 + 490) &&
           opensMenuOver(2);
  }
  bool opensMenuOver(std::size_t windows) {
    return start()->exitStatus() == 0 &&
           eventually([&, this] { return screen_.visibleWindowCount() == windows + 1; });
  }
  bool closesMenu() {
    return eventually([this] {
      screen_.clickAt(1100, 700);
      return screen_.visibleWindowCount() == 0;
    });
  }
  /// Clicks until a window is there that is as high as that, in the middle of the display.
  bool opensAt(int x, int height, int clickX, int clickY) {
    return eventually([&, this] {
      screen_.clickAt(clickX, clickY);
      return screen_.hasWindowAt(x, (720 - height) / 2, 520, height);
    });
  }
};

TEST_F(DayOnX11, CoversEveryDisplayAndOpensWhenTheNightIsOver) {
  server_.plugIn("DUMMY1", "1280x720", "1024x0");
  ASSERT_FALSE(screen_.isCovered());
  const auto program = start();
  ASSERT_TRUE(openEverything());
  latchNight(8s);
  EXPECT_TRUE(getsLocked());
  EXPECT_TRUE(eventually([&] {
    return screen_.hasWindowAt(0, 0, 1024, 768) && screen_.hasWindowAt(1024, 0, 1280, 720);
  }));

  EXPECT_TRUE(eventually([&] { return !screen_.isCovered(); }, 20s));
  EXPECT_TRUE(screen_.takesInput());
  EXPECT_TRUE(eventually([&] { return screen_.visibleWindowCount() == 0; })) << "nor by itself";
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

TEST_F(LockOnX11, HoldsUnderAWindowManagerAndACompositor) {
  const std::vector<std::string> place{"DISPLAY=" + server_.display(),
                                       "HOME=" + home_.path().string()};
  const ChildProcess manager({"openbox"}, place);
  const ChildProcess panel({"tint2"}, place);
  const ChildProcess compositor({"picom", "--backend", "xrender", "--config", "/dev/null"}, place);
  ASSERT_TRUE(eventually([&] { return screen_.isManaged() && screen_.isComposited(); }));
  const auto window = screen_.openWindow(false);
  screen_.makeFullscreen(window);
  const auto isDesktopSeen = [&] { return screen_.isBright(500, 400); };  // below any title bar
  ASSERT_TRUE(eventually([&] {
    screen_.raise(window);  // a compositor that has just come paints what changes
    return isDesktopSeen();
  }));
  latchNight(1h);
  const auto program = start();
  ASSERT_TRUE(getsLocked());
  screen_.raise(window);
  screen_.openWindow(true);
  screen_.switchDesktop(1);
  EXPECT_TRUE(eventually([&] { return isLocked(); }));
  server_.plugIn("DUMMY1", "1280x720", "1024x0");
  EXPECT_TRUE(eventually([&] { return isLocked(); }));
  forgetNight();
  EXPECT_TRUE(eventually(isDesktopSeen, 20s)) << "opens in the end";
}

TEST_F(LockOnX11, OutlastsAClientThatKeepsOpeningWindows) {
  latchNight(1h);
  const auto program = start();
  ASSERT_TRUE(getsLocked());
  const auto end = steady_clock::now() + (isSoak() ? 10'000ms : 1'500ms);
  auto lastCovered = steady_clock::now();
  auto longest = 0ns;
  for (auto nextWindow = lastCovered; steady_clock::now() < end;) {
    if (steady_clock::now() >= nextWindow) {
      screen_.openWindow(true);
      nextWindow += 10ms;
    }
    const auto now = steady_clock::now();
    if (!screen_.isBright(500, 20)) lastCovered = now;
    longest = std::max(longest, std::chrono::nanoseconds(now - lastCovered));
  }
  EXPECT_TRUE(eventually([&] { return screen_.isCovered(); }));
  if (isSoak()) {
    EXPECT_LT(longest, 50ms);
    std::cout << "longest in sight: " << longest / 1.0ms << " ms\n";
  }
}

TEST_F(LockOnX11, LetsNothingTypedThrough) {
  screen_.focusWindow();
  screen_.typeAndClick();
  ASSERT_TRUE(eventually([&] { return screen_.inputReceived() > 0; }));
  latchNight(1h);
  const auto program = start();
  ASSERT_TRUE(getsLocked());
  static_cast<void>(screen_.inputReceived());
  // From before the toolkit is there until well after the lock windows are.
  for (std::uint32_t i = 0; i < 100 || !screen_.hasWindowAt(0, 0, 1024, 768); ++i) {
    screen_.typeAndClick();
    screen_.switchDesktop(i % 2);
    ASSERT_TRUE(isLocked()) << i;
  }
  EXPECT_EQ(screen_.inputReceived(), 0);
}

TEST_F(LockOnX11, CoversWhateverDisplaysComeGoMoveAndTurn) {
  latchNight(1h);
  const auto program = start();
  ASSERT_TRUE(getsLocked());
  std::minstd_rand random(7);
  const auto oneOf = [&](std::initializer_list<const char*> words) {
    return std::string(words.begin()[random() % words.size()]);
  };
  std::set<std::string> plugged{"DUMMY0"};
  for (int i = 0; i < (isSoak() ? 200 : 20); ++i) {
    const auto output = "DUMMY" + std::to_string(random() % 6);
    if (random() % 3 == 0) {
      server_.unplug(output);
      plugged.erase(output);
    } else {
      server_.plugIn(output, oneOf({"1024x768", "1280x720", "800x600", "600x800"}),
                     oneOf({"0x0", "1280x0", "640x720", "2560x300", "0x768"}));
      plugged.insert(output);
    }
    EXPECT_TRUE(eventually([&] { return screen_.isCovered(); }, 1s)) << i;
  }
  EXPECT_TRUE(eventually([&] { return screen_.visibleWindowCount() == plugged.size() + 1; }))
      << "one a display, and the floor";
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

TEST_F(LockOnX11, TakesTheServersOwnKeysAndGivesThemBackEvenAfterACrash) {
  const int keys = screen_.serverKeyActions();
  ASSERT_GT(keys, 0);
  latchNight(1h);
  auto program = start();
  ASSERT_TRUE(getsLocked());
  EXPECT_TRUE(eventually([&] { return screen_.serverKeyActions() == 0; }));
  server_.loadKeymap("de");
  EXPECT_TRUE(eventually([&] { return screen_.serverKeyActions() == 0; })) << "a new keyboard";
  program->signal(SIGKILL);
  EXPECT_TRUE(program->exitStatus());
  EXPECT_EQ(screen_.serverKeyActions(), 0);
  forgetNight();
  program = start();
  EXPECT_TRUE(eventually([&] { return screen_.serverKeyActions() == keys; }));
}

TEST_F(LockOnX11, WaitsBlackForInputThatAnotherProgramHolds) {
  ASSERT_TRUE(screen_.takesInput());
  latchNight(1h);
  const auto program = start();
  EXPECT_TRUE(eventually([&] { return screen_.isCovered(); }));
  const auto end = steady_clock::now() + (isSoak() ? 5'000ms : 300ms);
  while (steady_clock::now() < end) ASSERT_TRUE(screen_.isCovered());
  screen_.release();
  const auto released = steady_clock::now();
  EXPECT_TRUE(eventually([&] { return screen_.isInputHeld(); }));
  if (isSoak()) {
    EXPECT_LT(steady_clock::now() - released, 100ms);
  }
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
