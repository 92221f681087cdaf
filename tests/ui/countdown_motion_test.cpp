#include "ui/lock_screen/countdown_motion.h"

#include <algorithm>
#include <gtest/gtest.h>

namespace lunevra {
namespace {

CountdownMotion& at(CountdownMotion& motion, double seconds) {
  motion.advance(TimeInterval{seconds});
  return motion;
}

TEST(CountdownMotion, AppearsSmallAndTransparentWithAFullRing) {
  CountdownMotion motion(TimeInterval{5.0});
  EXPECT_DOUBLE_EQ(at(motion, 5.0).scale(), 0.5);
  EXPECT_DOUBLE_EQ(motion.opacity(), 0.0);
  EXPECT_DOUBLE_EQ(motion.ringProgress(), 1.0);
  EXPECT_DOUBLE_EQ(motion.pulseScale(), 1.0);
  EXPECT_GT(at(motion, 5.3).scale(), 1.0);  // the spring overshoots
  EXPECT_LE(motion.opacity(), 1.0);
  EXPECT_NEAR(at(motion, 7.0).scale(), 1.0, 1e-4);
  EXPECT_NEAR(motion.opacity(), 1.0, 1e-4);
  EXPECT_DOUBLE_EQ(motion.ringProgress(), 1.0);
}

TEST(CountdownMotion, TheOutlineBreathesInTwoSeconds) {
  CountdownMotion motion(TimeInterval{0.0});
  EXPECT_NEAR(at(motion, 0.5).pulseScale(), 1.04, 1e-9);
  EXPECT_NEAR(at(motion, 1.0).pulseScale(), 1.08, 1e-9);
  EXPECT_NEAR(at(motion, 2.0).pulseScale(), 1.0, 1e-9);
  EXPECT_NEAR(at(motion, 7.0).pulseScale(), 1.08, 1e-9);
}

TEST(CountdownMotion, ChangesNeverLeaveTheNumberSmall) {
  for (const double gap : {0.01, 0.05, 0.1, 0.149, 0.151, 1.0}) {
    SCOPED_TRACE(gap);
    CountdownMotion motion(TimeInterval{0.0});
    motion.valueChanged(2, TimeInterval{2.0});
    motion.valueChanged(1, TimeInterval{2.0 + gap});
    double least = 1.0;
    for (double t = 2.0 + gap; t < 2.0 + gap + 0.2; t += 0.005)
      least = std::min(least, at(motion, t).scale());
    EXPECT_LT(least, 0.93);
    EXPECT_NEAR(at(motion, 4.5 + gap).scale(), 1.0, 1e-3);
  }
}

TEST(CountdownMotion, TheRingDrainsEvenlyByAThirdASecond) {
  CountdownMotion motion(TimeInterval{0.0});
  motion.valueChanged(2, TimeInterval{1.0});
  EXPECT_NEAR(at(motion, 1.5).ringProgress(), 5.0 / 6.0, 1e-9);
  motion.valueChanged(1, TimeInterval{1.5});  // early: from where the ring is, without a jump
  EXPECT_NEAR(at(motion, 1.5).ringProgress(), 5.0 / 6.0, 1e-9);
  EXPECT_NEAR(at(motion, 2.5).ringProgress(), 1.0 / 3.0, 1e-9);
  motion.valueChanged(0, TimeInterval{3.0});
  EXPECT_NEAR(at(motion, 9.0).ringProgress(), 0.0, 1e-9);
  motion.valueChanged(5, TimeInterval{10.0});
  EXPECT_DOUBLE_EQ(at(motion, 12.0).ringProgress(), 1.0);
}

}  // namespace
}  // namespace lunevra
