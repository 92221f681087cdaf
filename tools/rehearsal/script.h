#pragma once

#include <iosfwd>
#include <string>
#include <variant>
#include <vector>

#include "rehearsal/expectations.h"
#include "rehearsal/statements.h"

namespace lunevra::rehearsal {

struct Statement {
  int line = 0;
  std::variant<Action, Expectation> meaning;
};

/// A night script, checked from end to end before any of it is played.
struct Script {
  std::string file;
  std::uint64_t seed = 0;  ///< drawn from the text, so that equal scripts play equally
  std::vector<Statement> statements;
};

/// Throws MalformedScript with `FILE:LINE: reason`, or `FILE: reason` if it cannot be read.
[[nodiscard]] Script readScript(const std::string& file);
[[nodiscard]] Script parseScript(const std::string& file, const std::string& text);

struct Tally {
  int passed = 0;
  int failed = 0;
};

/// Plays the script in a fresh world; transcript and failed expectations go to `out`.
void play(const Script& script, const Night::StageFactory& makeStage, std::ostream& out,
          Tally& tally);

}  // namespace lunevra::rehearsal
