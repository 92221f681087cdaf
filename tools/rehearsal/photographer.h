#pragma once

#include <string>

namespace lunevra::rehearsal {

/// Saves what the displays show as `NN-STATE-DISPLAY.png`, numbered in the order of taking.
class Photographer {
 public:
  /// Makes the folder. An empty name: nothing is ever taken. Throws LocalizedError.
  explicit Photographer(std::string folder);

  [[nodiscard]] bool isHired() const { return !folder_.empty(); }
  /// Throws LocalizedError if a picture cannot be saved.
  void takePictures(const std::string& stateName);

 private:
  std::string folder_;
  int taken_ = 0;
};

}  // namespace lunevra::rehearsal
