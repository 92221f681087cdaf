#include "ui/lock_screen/particle_field.h"

#include <cmath>
#include <gtest/gtest.h>

#include "platform/simulated/simulated_host.h"

namespace lunevra {
namespace {

TEST(ParticleField, ScattersDotsOverTheWholeCanvas) {
  SeededRandom random;
  const ParticleField field(random, 800.0, 600.0);
  ASSERT_EQ(field.particles().size(), 50U);
  int upwards = 0;
  int right = 0;
  for (const auto& particle : field.particles()) {
    EXPECT_TRUE(particle.x >= 0.0 && particle.x <= 800.0);
    EXPECT_TRUE(particle.y >= 0.0 && particle.y <= 600.0);
    EXPECT_TRUE(particle.size >= 1.0 && particle.size <= 3.0);
    EXPECT_TRUE(particle.opacity >= 0.1 && particle.opacity <= 0.5);
    EXPECT_TRUE(particle.speedY >= -0.5 && particle.speedY <= 0.5);
    upwards += particle.speedY < 0.0 ? 1 : 0;
    right += particle.x > 400.0 ? 1 : 0;
  }
  EXPECT_TRUE(upwards > 5 && upwards < 45);
  EXPECT_TRUE(right > 5 && right < 45);
}

TEST(ParticleField, DotsMoveAndComeInAgainAtTheOtherEdge) {
  struct Case {
    double y, speedY, after;
  };
  constexpr Case cases[] = {
      {100.0, 0.5, 100.5}, {100.0, -0.5, 99.5}, {100.0, 0.0, 100.0}, {0.2, -0.5, 600.0},
      {0.5, -0.5, 0.0},    {599.8, 0.5, 0.0},   {599.5, 0.5, 600.0},
  };
  for (const auto& c : cases) {
    ParticleField field({{.x = 7.0, .y = c.y, .size = 2.0, .opacity = 0.3, .speedY = c.speedY}});
    field.tick({0.0}, 600.0);
    EXPECT_DOUBLE_EQ(field.particles()[0].y, c.after) << c.y << " " << c.speedY;
    EXPECT_DOUBLE_EQ(field.particles()[0].x, 7.0);
    EXPECT_DOUBLE_EQ(field.particles()[0].size, 2.0);
    EXPECT_DOUBLE_EQ(field.particles()[0].speedY, c.speedY);
  }
}

TEST(ParticleField, DotsTwinkleOneAfterTheOther) {
  ParticleField field(std::vector<Particle>(3));
  const double dark = 1.5 * std::acos(-1.0);  // where the sine is least
  field.tick({dark - 1.0}, 600.0);
  EXPECT_NEAR(field.particles()[1].opacity, 0.1, 1e-12);
  field.tick({dark + std::acos(-1.0) - 2.0}, 600.0);
  EXPECT_NEAR(field.particles()[2].opacity, 0.5, 1e-12);
  EXPECT_GT(field.particles()[2].opacity, field.particles()[0].opacity);
}

}  // namespace
}  // namespace lunevra
