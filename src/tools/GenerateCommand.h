// Large part programs for trials, as a command.
#pragma once

#include <iosfwd>
#include <string>
#include <vector>

namespace torvane::tools {

/// The most profiles that the 16-bit counts of a slot hold: ten table lines each, and the first.
inline constexpr int MostProfiles = 3276;

/// The whole command from its arguments (without the program's own name): writes a program to the
/// file named, or to `out`. Exit status 0 good, 2 wrong use or a file that cannot be written,
/// reported in one sentence on `errors`.
[[nodiscard]] int GenerateMain(std::vector<std::string> arguments, std::ostream& out,
                               std::ostream& errors);

}  // namespace torvane::tools
