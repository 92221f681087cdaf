#include "ui/lock_screen/spring.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace lunevra {

void Spring::setTarget(double target, SpringTiming timing, TimeInterval now) {
  auto current = state(now);
  current.offset += target_ - target;
  initial_ = current;
  target_ = target;
  timing_ = timing;
  start_ = now;
}

// Solves x'' + 2ζω x' + ω² x = 0 from the offset and velocity at the start.
Spring::State Spring::state(TimeInterval now) const {
  const double t = std::max(0.0, (now - start_).count());
  const double omega = 2.0 * std::numbers::pi / timing_.response.count();
  const double zeta = timing_.dampingFraction;
  const auto [x0, v0] = initial_;
  if (zeta < 1.0) {
    const double decay = zeta * omega;
    const double swing = omega * std::sqrt(1.0 - zeta * zeta);
    const double sine = (v0 + decay * x0) / swing;
    const double c = std::cos(swing * t);
    const double s = std::sin(swing * t);
    const double envelope = std::exp(-decay * t);
    return {envelope * (x0 * c + sine * s),
            envelope * ((sine * swing - decay * x0) * c - (x0 * swing + decay * sine) * s)};
  }
  if (zeta == 1.0) {
    const double slope = v0 + omega * x0;
    const double envelope = std::exp(-omega * t);
    return {envelope * (x0 + slope * t), envelope * (v0 - omega * slope * t)};
  }
  const double root = omega * std::sqrt(zeta * zeta - 1.0);
  const double slow = -zeta * omega + root;
  const double fast = -zeta * omega - root;
  const double fastPart = (slow * x0 - v0) / (slow - fast);
  const double slowPart = x0 - fastPart;
  return {slowPart * std::exp(slow * t) + fastPart * std::exp(fast * t),
          slowPart * slow * std::exp(slow * t) + fastPart * fast * std::exp(fast * t)};
}

}  // namespace lunevra
