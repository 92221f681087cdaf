#include "rehearsal/expectations.h"

#include <optional>
#include <utility>

#include "rehearsal/expectation_parts.h"
#include "rehearsal/world_text.h"

namespace lunevra::rehearsal {

Expectation fixed(std::string expected, Find find) {
  return [expected = std::move(expected), find = std::move(find)](Night& night) {
    return Comparison{expected, find(night)};
  };
}

Find whileRunning(Find find) {
  return [find = std::move(find)](Night& night) {
    return night.isRunning() ? find(night) : "the program not running";
  };
}

Expectation running(std::string expected, Find find) {
  return fixed(std::move(expected), whileRunning(std::move(find)));
}

Expectation parseInstantExpectation(Words& words, Find find) {
  if (words.takeIf("none")) return fixed("none", std::move(find));
  return [date = words.takeInstant(), find = std::move(find)](Night& night) {
    return Comparison{describe(std::optional(night.instant(date)), night.computer().calendar),
                      find(night)};
  };
}

Expectation parseExpectation(Words& words) {
  const auto name = words.takeWord("what is expected");
  for (const auto* expectations : {&engineExpectations(), &surroundingsExpectations()}) {
    const auto parser = expectations->find(name);
    if (parser == expectations->end()) continue;
    auto expectation = parser->second(words);
    words.expectEnd();
    return expectation;
  }
  throw MalformedScript("unknown expectation " + name);
}

}  // namespace lunevra::rehearsal
