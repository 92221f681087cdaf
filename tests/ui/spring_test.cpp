#include "ui/lock_screen/spring.h"

#include <cmath>
#include <gtest/gtest.h>
#include <numbers>

namespace lunevra {
namespace {

TEST(Spring, ObeysTheLawOfTheDampedOscillator) {
  for (const double damping : {0.5, 0.7, 1.0, 1.6}) {
    SCOPED_TRACE(damping);
    Spring spring(0.5);
    spring.setTarget(1.0, {TimeInterval{0.5}, damping}, TimeInterval{3.0});
    const double omega = 2.0 * std::numbers::pi / 0.5;
    EXPECT_DOUBLE_EQ(spring.value(TimeInterval{3.0}), 0.5);
    EXPECT_NEAR(spring.velocity(TimeInterval{3.0}), 0.0, 1e-12);
    for (double t = 3.05; t < 4.0; t += 0.05) {
      constexpr double h = 1e-4;
      const auto value = [&](double at) { return spring.value(TimeInterval{at}); };
      const double velocity = (value(t + h) - value(t - h)) / (2.0 * h);
      const double acceleration = (value(t + h) - 2.0 * value(t) + value(t - h)) / (h * h);
      EXPECT_NEAR(spring.velocity(TimeInterval{t}), velocity, 1e-4);
      EXPECT_NEAR(acceleration,
                  -omega * omega * (value(t) - 1.0) - 2.0 * damping * omega * velocity, 1e-3);
    }
    EXPECT_NEAR(spring.value(TimeInterval{6.0}), 1.0, 1e-3);
  }
}

TEST(Spring, ANewTargetTakesOverPlaceAndSpeed) {
  Spring spring(1.0);
  spring.setTarget(0.85, {TimeInterval{0.3}, 0.5}, TimeInterval{0.0});
  const TimeInterval turn{0.07};
  const double value = spring.value(turn);
  const double velocity = spring.velocity(turn);
  EXPECT_LT(velocity, -0.1);
  spring.setTarget(1.0, {TimeInterval{0.3}, 0.6}, turn);
  EXPECT_NEAR(spring.value(turn), value, 1e-12);
  EXPECT_NEAR(spring.velocity(turn), velocity, 1e-9);
}

}  // namespace
}  // namespace lunevra
