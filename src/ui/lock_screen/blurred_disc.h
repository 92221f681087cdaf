#pragma once

#include <vector>

namespace lunevra {

/// How bright a disc of this radius is at 0, 1, 2 … from its centre after a Gaussian blur of
/// standard deviation `sigma`, until nothing is left of it. 1 is the unblurred disc.
[[nodiscard]] std::vector<double> blurredDiscProfile(double radius, double sigma);

}  // namespace lunevra
