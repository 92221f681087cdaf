#include "platform/simulated/simulated_host.h"

#include <cmath>
#include <gtest/gtest.h>

#include "platform/host_contract/host_contract.h"
#include "platform/host_contract/run_loop_contract.h"

namespace lunevra {
namespace {

class SimulatedComputer {
 public:
  Host host() { return computer_.host(); }
  void restart() { computer_.time.dropProcess(); }
  void setZone(const std::string& name) { computer_.calendar.setZone(name); }
  void writeElsewhere(std::string_view key, const StoredValue& value) {
    computer_.cloud.setFromElsewhere(key, value);
  }
  bool until(const std::function<bool()>& condition) {
    for (int turn = 0; turn < 1000 && !condition(); ++turn)
      computer_.time.pass(std::chrono::milliseconds{10});
    return condition();
  }

 private:
  SimulatedHost computer_;
};

class SimulatedThread {
 public:
  RunLoop& loop() { return time_; }
  std::chrono::milliseconds now() {
    return std::chrono::milliseconds{std::llround(time_.now().secondsSince1970 * 1000)};
  }
  bool until(const std::function<bool()>& condition) {
    for (int turn = 0; turn < 1000 && !condition(); ++turn) {
      time_.drainMainQueue();
      time_.pass(std::chrono::milliseconds{1});
    }
    return condition();
  }

 private:
  SimulatedTime time_;
};

INSTANTIATE_TYPED_TEST_SUITE_P(Simulated, RunLoopContract, SimulatedThread);
INSTANTIATE_TYPED_TEST_SUITE_P(Simulated, HostContract, SimulatedComputer);

}  // namespace
}  // namespace lunevra
