// The controller's end of the line: bytes become lines, and every line gets its answer.
#pragma once

#include <functional>
#include <string>
#include <string_view>

#include "simulator/ControllerMemory.h"

namespace torvane::simulator {

/// A line without its carriage return.
struct ReceivedLine {
  std::string_view Text;
  bool TooLong = false;  ///< more characters came than a line may have; the rest was dropped
};

/// Characters of the longest line.
inline constexpr std::size_t LongestLine = 255;

class CommandLine {
 public:
  explicit CommandLine(ControllerMemory& memory) : memory_(memory) {}

  /// Adds bytes; `whole` is called for each line that a carriage return ends. Other control
  /// characters are dropped, so a line feed after the carriage return does no harm.
  void Receive(std::string_view bytes, const std::function<void(const ReceivedLine&)>& whole);

  /// What has come of a line so far is dropped.
  void Clear() {
    line_.clear();
    tooLong_ = false;
  }

  /// Carries the line out and gives the whole answer, valid until the next call: for an empty line
  /// ">>"; for any other the echo with its carriage return and a line feed, then for a query its
  /// value, or for a fault "%", ended by carriage return and line feed, then ">>".
  [[nodiscard]] std::string_view Answer(const ReceivedLine& line);

  /// The answer of a line that is refused whatever it says, and is not carried out.
  [[nodiscard]] std::string_view Refuse(const ReceivedLine& line);

 private:
  bool Query(std::string_view expression);

  ControllerMemory& memory_;
  std::string line_;
  bool tooLong_ = false;
  std::string answer_;
};

}  // namespace torvane::simulator
