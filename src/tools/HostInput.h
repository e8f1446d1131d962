// What the programs at the other end of a line listen to: the line, a person at the keyboard, and
// the wish that they end.
#pragma once

#include <csignal>
#include <string>
#include <vector>

#include "tools/SimLine.h"

namespace torvane::tools {

class HostInput {
 public:
  /// `keyboard` is the handle of the operator's commands, below 0 for none. SIGINT and SIGTERM are
  /// taken over until this goes.
  explicit HostInput(int keyboard);
  ~HostInput();
  HostInput(const HostInput&) = delete;
  HostInput& operator=(const HostInput&) = delete;

  /// Waits up to `longestMs` until the line can be read (where `reads`) or written (where it wants
  /// to), a command or a signal comes. False when the program is to end.
  bool Wait(const SimLine& line, bool reads, int longestMs);

  /// The lines typed since the last call, without their ends.
  [[nodiscard]] std::vector<std::string> TakeLines();

 private:
  std::string typed_;
  int keyboard_;
  sigset_t mask_{};  ///< of signals, as it was before
  int signals_ = -1;
};

}  // namespace torvane::tools
