// torvane-journal: what the run journal of an installation sums up to.
#pragma once

#include <iosfwd>
#include <string>
#include <vector>

namespace torvane::tools {

/// The whole command: arguments without the program's name. Returns the exit status: 0 good, 1 the
/// journal cannot be read or holds damaged lines, 2 wrong use.
[[nodiscard]] int JournalMain(std::vector<std::string> arguments, std::ostream& out,
                              std::ostream& errors);

}  // namespace torvane::tools
