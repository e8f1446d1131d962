// The path that the simulated machine has run, in a file: one JSON object a line.
#pragma once

#include <fstream>
#include <string>

#include "simulator/Machine.h"

namespace torvane::tools {

/// Each piece goes into the file at once, so that the end of the program loses none. After a write
/// that fails nothing more is written.
class PathLog {
 public:
  /// Makes the file anew. Throws RuntimeFault where that cannot be done. `path` is native.
  explicit PathLog(const std::string& path);

  /// Must outlive the machine's next piece.
  void Follow(simulator::Machine& machine);

 private:
  std::ofstream file_;
};

}  // namespace torvane::tools
