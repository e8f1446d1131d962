// Everything that shows, for a script's reader: forms, controls, the state, the plot.
#pragma once

#include <string>

#include "tools/ScriptStage.h"

namespace torvane::tools {

/// JSON, UTF-8: "forms" from the front to the back with their controls, "state", "plot". Places are
/// pixels on the desk, colours "#RRGGBB". A list's "top" is the first line in view, from 0, and its
/// "row" the current line, from 1, 0 when there is none. "plot" is null before there is one.
[[nodiscard]] std::string ConsoleDump(const ScriptStage& stage);

/// The kind of a control in a dump, such as "two-state".
[[nodiscard]] const char* KindOf(const toolkit::Control& control);

}  // namespace torvane::tools
