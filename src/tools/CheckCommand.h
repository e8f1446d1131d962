// The check of several programs at once, as a command.
#pragma once

#include <iosfwd>

#include "platform/Clock.h"
#include "tools/CheckOptions.h"
#include "tools/QtOutput.h"

namespace torvane::tools {

/// Where the command talks. `Terminal`: errors go to a terminal, which gets a progress line.
struct CheckStreams {
  std::ostream& Out;
  std::ostream& Errors;
  bool Terminal = false;
  const QtOutput* Qt = nullptr;  ///< for pictures and JSON
};

/// Checks all programs of the options on all cores and prints what was found, in the order asked
/// for. Gives an ExitStatus. What keeps it from checking at all is one sentence on `Errors`.
[[nodiscard]] int RunCheckCommand(const CheckOptions& options, const platform::Clock& clock,
                                  CheckStreams streams);

/// The whole command from its arguments (without the program's own name).
[[nodiscard]] int CheckMain(const std::vector<std::string>& arguments, CheckStreams streams);

}  // namespace torvane::tools
