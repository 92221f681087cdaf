#pragma once

#include <string>
#include <vector>

namespace lunevra::rehearsal {

struct CommandLine {
  std::vector<std::string> files;
  bool show = false;     ///< real windows instead of none
  double speed = 600.0;  ///< how many times as fast as real time
  std::string pictures;  ///< folder for pictures; empty: none are taken
};

/// Throws MalformedScript with the reason or the usage.
[[nodiscard]] CommandLine parseCommandLine(const std::vector<std::string>& arguments);

}  // namespace lunevra::rehearsal
