// How the text of a warning is laid out: line feeds that stand it in the middle of its box.
#pragma once

#include <string>
#include <string_view>

namespace torvane::supervision {

/// One line, with two line feeds before it.
[[nodiscard]] std::string OneLineWarning(std::string_view line);

/// Two lines, with one line feed before them and one between.
[[nodiscard]] std::string TwoLineWarning(std::string_view first, std::string_view second);

}  // namespace torvane::supervision
