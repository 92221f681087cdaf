#pragma once

#include <functional>
#include <map>
#include <string>

#include "rehearsal/night.h"
#include "rehearsal/script_words.h"

namespace lunevra::rehearsal {

/// What a statement of the world, or of what happens, does to the night.
using Action = std::function<void(Night&)>;

/// Reads one such statement, whose first word is `keyword`. Throws MalformedScript.
[[nodiscard]] Action parseAction(const std::string& keyword, Words& words);

using ActionParsers = std::map<std::string, Action (*)(Words&), std::less<>>;

/// Statements that describe or change the world around the program.
[[nodiscard]] const ActionParsers& worldStatements();

/// Statements of what happens, to the program or by the person.
[[nodiscard]] const ActionParsers& eventStatements();

/// Reads the name of a registration: agent, daemon or login-item.
using FindService = SimulatedService& (*)(SimulatedHost&);
[[nodiscard]] FindService parseService(Words& words);

}  // namespace lunevra::rehearsal
