#include "ui/lock_screen/particle_field.h"

#include <array>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <random>

namespace lunevra {
namespace {

constexpr std::size_t particleCount = 50;

std::mt19937 seededGenerator(RandomSource& random) {
  std::array<std::uint8_t, 4> seed{};
  // An unseeded field is as pretty as any other.
  static_cast<void>(random.fill(seed));
  std::seed_seq sequence(seed.begin(), seed.end());
  return std::mt19937(sequence);
}

double uniform(std::mt19937& generator, double least, double greatest) {
  const auto end = std::nextafter(greatest, std::numeric_limits<double>::max());
  return std::uniform_real_distribution(least, end)(generator);
}

}  // namespace

ParticleField::ParticleField(RandomSource& random, double width, double height) {
  auto generator = seededGenerator(random);
  particles_.resize(particleCount);
  for (auto& particle : particles_) {
    particle.x = uniform(generator, 0.0, width);
    particle.y = uniform(generator, 0.0, height);
    particle.size = uniform(generator, 1.0, 3.0);
    particle.opacity = uniform(generator, 0.1, 0.5);
    particle.speedY = uniform(generator, -0.5, 0.5);
  }
}

void ParticleField::tick(Instant now, double height) {
  for (std::size_t i = 0; i < particles_.size(); ++i) {
    auto& particle = particles_[i];
    particle.y += particle.speedY;
    const auto phase = now.secondsSince1970 + static_cast<double>(i);
    particle.opacity = (std::sin(phase) + 1.0) * 0.4 * 0.5 + 0.1;
    if (particle.y < 0.0) {
      particle.y = height;
    } else if (particle.y > height) {
      particle.y = 0.0;
    }
  }
}

}  // namespace lunevra
