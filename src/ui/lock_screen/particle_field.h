#pragma once

#include <utility>
#include <vector>

#include "platform/instant.h"
#include "platform/random_source.h"

namespace lunevra {

/// One drifting dot; `x` and `y` are the top left of its bounding square, in points.
struct Particle {
  double x = 0.0;
  double y = 0.0;
  double size = 0.0;
  double opacity = 0.0;
  double speedY = 0.0;  // points a tick, negative upwards
};

/// Fifty dots that drift up and down and twinkle.
class ParticleField {
 public:
  /// Scatters new dots over a canvas of this size in points.
  ParticleField(RandomSource& random, double width, double height);
  explicit ParticleField(std::vector<Particle> particles) : particles_(std::move(particles)) {}

  /// One step of the field, twenty of which make a second; dots that leave enter at the other edge.
  void tick(Instant now, double height);

  [[nodiscard]] const std::vector<Particle>& particles() const { return particles_; }

 private:
  std::vector<Particle> particles_;
};

}  // namespace lunevra
