// The far end of the line to the controller: bytes in, bytes out, on a clock that is moved by hand.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace torvane::simulator {

/// Whatever answers the front end: the simulated controller, or the replay of a recorded one.
class ControllerEnd {
 public:
  virtual ~ControllerEnd() = default;

  /// Seconds of the line that have passed.
  virtual void Advance(double seconds) = 0;

  /// Bytes from the front end, at the present time.
  virtual void Receive(std::string_view bytes) = 0;

  /// The bytes whose time has come.
  [[nodiscard]] virtual std::string TakeOutput() = 0;

  /// Seconds until the next bytes are due, 0 when they are; nothing when no answer is due.
  [[nodiscard]] virtual std::optional<double> OutputDueIn() const = 0;
};

}  // namespace torvane::simulator
