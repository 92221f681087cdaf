#include "ui/lock_screen/blurred_disc.h"

#include <cmath>
#include <cstddef>
#include <numbers>

namespace lunevra {
namespace {

constexpr int chords = 64;

double normalDistribution(double x) {
  return 0.5 * std::erfc(-x / std::numbers::sqrt2);
}

}  // namespace

// The blur across the chords is a difference of two error functions; along them it is summed up.
std::vector<double> blurredDiscProfile(double radius, double sigma) {
  const auto length = static_cast<std::size_t>(std::ceil(radius + 3.5 * sigma)) + 1;
  const double step = 2.0 * radius / chords;
  std::vector<double> profile;
  profile.reserve(length);
  for (std::size_t distance = 0; distance < length; ++distance) {
    double sum = 0.0;
    for (int i = 0; i < chords; ++i) {
      const double y = -radius + (i + 0.5) * step;
      const double half = std::sqrt(radius * radius - y * y);
      const double x = static_cast<double>(distance);
      const double across =
          normalDistribution((half - x) / sigma) - normalDistribution((-half - x) / sigma);
      sum += across * (normalDistribution((y + step / 2.0) / sigma) -
                       normalDistribution((y - step / 2.0) / sigma));
    }
    profile.push_back(sum);
  }
  return profile;
}

}  // namespace lunevra
