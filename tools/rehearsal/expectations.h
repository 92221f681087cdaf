#pragma once

#include <functional>
#include <map>
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

using ExpectationParsers = std::map<std::string, Expectation (*)(Words&), std::less<>>;

/// Of the engine and of what it keeps in the stores.
[[nodiscard]] const ExpectationParsers& engineExpectations();

/// Of windows and input, of what went out to others, and of what a person sees.
[[nodiscard]] const ExpectationParsers& surroundingsExpectations();

}  // namespace lunevra::rehearsal
