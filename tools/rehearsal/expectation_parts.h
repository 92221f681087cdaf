#pragma once

#include <functional>
#include <string>

#include "rehearsal/expectations.h"

namespace lunevra::rehearsal {

/// What a night has, as text that is compared.
using Find = std::function<std::string(Night&)>;

[[nodiscard]] Expectation fixed(std::string expected, Find find);
/// For what only a running program has.
[[nodiscard]] Find whileRunning(Find find);
[[nodiscard]] Expectation running(std::string expected, Find find);
/// `none` or an instant, which is one only in the zone that the night has by then.
[[nodiscard]] Expectation parseInstantExpectation(Words& words, Find find);

[[nodiscard]] inline std::string yesNo(bool flag) {
  return flag ? "yes" : "no";
}

}  // namespace lunevra::rehearsal
