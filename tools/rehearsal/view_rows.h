#pragma once

#include <string>
#include <vector>

#include "rehearsal/night.h"
#include "rehearsal/script_words.h"

namespace lunevra::rehearsal {

/// The views that a script can look at; the settings include the dashboard.
enum class View { menu, dashboard, lockScreen, settings };

/// Throws MalformedScript.
[[nodiscard]] View takeView(Words& words);
[[nodiscard]] std::string viewName(View view);

/// What the view shows at this moment, one row a line: its text, and in brackets the symbol and the
/// state of a control. Only reads: a view is made for the moment and nothing of the night changes.
/// Needs a running program.
[[nodiscard]] std::vector<std::string> rowsOf(View view, Night& night);

}  // namespace lunevra::rehearsal
