#pragma once

#include <functional>
#include <string>

#include "rehearsal/night.h"
#include "rehearsal/script_words.h"

namespace lunevra::rehearsal {

struct Comparison {
  std::string expected;
  std::string found;

  [[nodiscard]] bool holds() const { return expected == found; }
};

/// Looks at the night and says what was expected and what is.
using Expectation = std::function<Comparison(Night&)>;

/// Reads what follows the word `expect`. Throws MalformedScript.
[[nodiscard]] Expectation parseExpectation(Words& words);

}  // namespace lunevra::rehearsal
