// Programs of the same installation.
#pragma once

#include <string>
#include <vector>

namespace torvane::tools {

/// Native paths where a program that people do not start themselves may be: beside this one, where
/// it was built, then where it is installed.
[[nodiscard]] std::vector<std::string> PlacesOfProgram(const std::string& ownPath,
                                                       const std::string& name);

/// Goes on as the program `name` with the same arguments and streams, and does not come back. Where
/// it cannot, gives its path and what was wrong.
[[nodiscard]] std::string BecomeProgram(const std::string& name, char** argv);

}  // namespace torvane::tools
