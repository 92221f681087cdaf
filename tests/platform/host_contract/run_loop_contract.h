#pragma once

#include <chrono>
#include <functional>
#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "platform/run_loop.h"

namespace lunevra {

/// What the logic expects of a main thread, whichever host runs it. `Thread` has
///   RunLoop& loop();
///   std::chrono::milliseconds now();              time as its timers see it
///   bool until(const std::function<bool()>&);     lets it run until that holds
template <class Thread>
class RunLoopContract : public ::testing::Test {
 protected:
  Thread thread_;
};

TYPED_TEST_SUITE_P(RunLoopContract);

TYPED_TEST_P(RunLoopContract, TimersKeepTheirGridUntilTheirTokenEnds) {
  using std::chrono_literals::operator""ms;
  auto& loop = this->thread_.loop();
  const auto start = this->thread_.now();
  int fired = 0;
  Registration timer = loop.scheduleRepeating(20ms, 10ms, [&] {
    ++fired;
    EXPECT_GE(this->thread_.now() - start, fired * 20ms) << "early";
    if (fired == 3) timer.reset();
  });
  bool isOver = false;
  ASSERT_TRUE(this->thread_.until([&] { return fired == 3; }));
  loop.after(60ms, [&] { isOver = true; });
  ASSERT_TRUE(this->thread_.until([&] { return isOver; }));
  EXPECT_EQ(fired, 3);
}

TYPED_TEST_P(RunLoopContract, DeferredWorkRunsOnceInOrderInALaterTurn) {
  using std::chrono_literals::operator""ms;
  auto& loop = this->thread_.loop();
  std::string order;
  loop.after(20ms, [&] { order += 'c'; });
  loop.async([&] {
    order += 'a';
    loop.async([&] { order += 'b'; });
  });
  loop.async([&] { order += 'A'; });
  EXPECT_EQ(order, "");
  ASSERT_TRUE(this->thread_.until([&] { return order.size() == 4; }));
  EXPECT_EQ(order, "aAbc");
}

REGISTER_TYPED_TEST_SUITE_P(RunLoopContract, TimersKeepTheirGridUntilTheirTokenEnds,
                            DeferredWorkRunsOnceInOrderInALaterTurn);

}  // namespace lunevra
