#include <gtest/gtest.h>

#include "app/program.h"
#include "platform/simulated/simulated_host.h"

namespace lunevra {
namespace {

using std::chrono_literals::operator""s;
using std::chrono_literals::operator""h;

class DaytimeScenesTest : public testing::Test {
 protected:
  DaytimeScenesTest() {
    setHour(15);
    computer.displays.set("Built-in", {0, 0, 1366, 768});
    computer.application.beginProcess();
    program.app().launch();
    program.app().windowGroupContentAppeared();
  }
  void setHour(int hour) {
    computer.time.setWallClock(*computer.calendar.instant(
        {.year = 2026, .month = 3, .day = 14, .hour = hour, .minute = 0}));
  }
  /// The visible windows that are not the lock's.
  std::vector<Rect> shown() {
    std::vector<Rect> frames;
    for (const auto& window : computer.application.windows()) {
      const auto& simulated = dynamic_cast<const SimulatedWindow&>(*window);
      if (simulated.isVisible() && simulated.level() != WindowLevel::screenSaver)
        frames.push_back(window->frame());
    }
    return frames;
  }

  SimulatedHost computer;
  SceneActions actions;
  SceneContentFactory keepActions = [this](ShutdownManager&, const SceneActions& given) {
    actions = given;
    return nullptr;
  };
  Program program{computer.host(), computer.desktop(), [](ShutdownManager&) { return nullptr; },
                  DaytimeContents{.settings = keepActions, .menu = keepActions}};
};

TEST_F(DaytimeScenesTest, OpenByDayAndFitLowDisplays) {
  EXPECT_TRUE(shown().empty());
  program.app().openMenu(1300, 20);
  actions.openSettings();
  ASSERT_EQ(shown().size(), 2U);
  const auto frame = shown().back().width == 520 ? shown().back() : shown().front();
  EXPECT_EQ(frame.width, 520);
  EXPECT_LT(frame.height, 768);
  EXPECT_GE(frame.y, 0);
  program.app().openSettings();
  EXPECT_EQ(shown().size(), 2U) << "brought forward, not opened twice";
  actions.closeSettings();
  actions.closeMenu();
  EXPECT_TRUE(shown().empty());
  computer.displays.set("Built-in", {1920, 0, 1366, 768});  // where the person is now
  program.app().openSettings();
  ASSERT_EQ(shown().size(), 1U);
  EXPECT_GT(shown().front().x, 1920);
}

TEST_F(DaytimeScenesTest, TheLockHidesThemForGood) {
  program.app().openMenu(1300, 20);
  program.app().openSettings();
  setHour(22);
  program.app().shutdownManager().evaluateSchedule();
  computer.time.pass(4s);
  EXPECT_TRUE(shown().empty());
  program.app().openSettings();
  program.app().openMenu(1300, 20);
  EXPECT_TRUE(shown().empty());
  computer.time.pass(8h);
  EXPECT_EQ(program.app().shutdownManager().currentState(), BlockingState::idle);
  EXPECT_TRUE(shown().empty());
  program.app().openSettings();
  EXPECT_EQ(shown().size(), 1U);
}

}  // namespace
}  // namespace lunevra
