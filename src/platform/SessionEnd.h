// How the program leaves the machine: the operating system's session, another program.
#pragma once

#include <string>
#include <string_view>

namespace torvane::platform {

class SessionEnd {
 public:
  virtual ~SessionEnd() = default;

  /// Ends the operating system's session, as the machine's own PC does on shut down.
  virtual void EndSession() = 0;

  /// Starts another program and does not wait for it.
  virtual void StartProgram(std::string_view path) = 0;

  /// Ends this process's event loop; the exit status is 0.
  virtual void EndProcess() = 0;
};

}  // namespace torvane::platform
