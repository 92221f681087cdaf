#pragma once

#include <cstdint>
#include <random>
#include <string>
#include <vector>

#include "rehearsal/night.h"

namespace lunevra::soak {

/// What a person, other machines and bad luck do to a computer over some weeks, one statement of
/// the night language after the other. Equal seeds give equal weeks.
class RandomNights {
 public:
  explicit RandomNights(std::uint64_t seed) : generator_(seed) {}

  /// The world as the program finds it, and its start.
  [[nodiscard]] std::vector<std::string> beginning();
  /// What happens next; `night` tells the date and whether the program runs.
  [[nodiscard]] std::string next(rehearsal::Night& night);
  /// Whether the drive with the key is plugged in.
  [[nodiscard]] bool isKeyInserted() const { return isKeyInserted_; }

 private:
  [[nodiscard]] int number(int least, int greatest);
  [[nodiscard]] const std::string& oneOf(const std::vector<std::string>& choices);
  [[nodiscard]] std::string time();
  [[nodiscard]] std::string waiting(rehearsal::Night& night);
  [[nodiscard]] std::string person();
  [[nodiscard]] std::string drive();
  [[nodiscard]] std::string otherMachine(rehearsal::Night& night);
  [[nodiscard]] std::string computer();
  [[nodiscard]] std::string clockJump(rehearsal::Night& night);

  std::mt19937_64 generator_;
  bool isKeyInserted_ = false;
};

}  // namespace lunevra::soak
