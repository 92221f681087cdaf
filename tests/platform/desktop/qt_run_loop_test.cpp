#include "platform/desktop/qt_run_loop.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <thread>
#include <vector>

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QEventLoop>

#include "platform/host_contract/run_loop_contract.h"

namespace lunevra {
namespace {

using std::chrono_literals::operator""ms;

/// A main thread that Qt runs.
class QtThread {
 public:
  QtRunLoop& loop() { return loop_; }
  [[nodiscard]] std::chrono::milliseconds now() const {
    return std::chrono::milliseconds{clock_.elapsed()};
  }
  [[nodiscard]] qint64 nanoseconds() const { return clock_.nsecsElapsed(); }
  [[nodiscard]] bool until(const std::function<bool()>& condition) const {
    while (!condition() && clock_.elapsed() < 5000)
      QCoreApplication::processEvents(QEventLoop::AllEvents | QEventLoop::WaitForMoreEvents, 100);
    return condition();
  }

 private:
  int argumentCount_ = 0;
  QCoreApplication application_{argumentCount_, nullptr};
  QtRunLoop loop_;
  QElapsedTimer clock_ = [] {
    QElapsedTimer clock;
    clock.start();
    return clock;
  }();
};

INSTANTIATE_TYPED_TEST_SUITE_P(Qt, RunLoopContract, QtThread);

class QtRunLoopTest : public testing::Test {
 protected:
  QtThread thread_;
  QtRunLoop& loop_ = thread_.loop();
};

TEST_F(QtRunLoopTest, TimersWithinTheirTolerancesShareAWakeUp) {
  std::vector<qint64> moments;
  const auto note = [&] { moments.push_back(thread_.nanoseconds()); };
  const auto patient = loop_.scheduleRepeating(60ms, 60ms, note);
  const auto punctual = loop_.scheduleRepeating(100ms, 0ms, note);
  ASSERT_TRUE(thread_.until([&] { return moments.size() >= 2; }));
  EXPECT_GE(moments[0], 100'000'000) << "the patient one waits for the punctual one";
  EXPECT_LT(moments[1] - moments[0], 20'000'000);
}

TEST_F(QtRunLoopTest, MissedFiringTimesAreMadeUpForOnceAndTheGridIsKept) {
  std::vector<std::int64_t> moments;
  const auto timer = loop_.scheduleRepeating(40ms, 0ms, [&] {
    moments.push_back(thread_.now().count());
    if (moments.size() == 1) std::this_thread::sleep_for(100ms);  // work that overruns two points
  });
  ASSERT_TRUE(thread_.until([&] { return moments.size() >= 3; }));
  EXPECT_GE(moments[2], 160) << "one at once for both, the next on the grid";
}

TEST_F(QtRunLoopTest, ATimerMayEndItselfAndOpenALoopInWhichOthersFire) {
  int fired = 0;
  bool hasNested = false;
  Registration once = loop_.scheduleRepeating(10ms, 0ms, [&] {
    ++fired;
    once.reset();
    loop_.after(10ms, [&] { hasNested = true; });
    EXPECT_TRUE(thread_.until([&] { return hasNested; }));
  });
  ASSERT_TRUE(thread_.until([&] { return hasNested; }));
  bool isOver = false;
  loop_.after(50ms, [&] { isOver = true; });
  ASSERT_TRUE(thread_.until([&] { return isOver; }));
  EXPECT_EQ(fired, 1);
}

TEST_F(QtRunLoopTest, WorkFromOtherThreadsRunsInOrderOnTheMainOne) {
  std::vector<int> order;
  const auto main = std::this_thread::get_id();
  std::thread([&] {
    for (int i = 0; i < 100; ++i)
      loop_.async([&, i] {
        EXPECT_EQ(std::this_thread::get_id(), main);
        order.push_back(i);
      });
  }).join();
  EXPECT_TRUE(order.empty()) << "not before a later turn";
  ASSERT_TRUE(thread_.until([&] { return order.size() == 100; }));
  EXPECT_TRUE(std::is_sorted(order.begin(), order.end()));
}

}  // namespace
}  // namespace lunevra
