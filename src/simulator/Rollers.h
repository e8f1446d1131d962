// The sheet rollers: raised and lowered by a message bit that the front end writes.
#pragma once

#include "simulator/ControllerMemory.h"
#include "simulator/MachineEvents.h"

namespace torvane::simulator {

/// The front end raises bit 17 of the status word and bit 5 of the messages; it takes back only the
/// latter, and the machine clears the former itself once the rollers are down.
class Rollers {
 public:
  Rollers(ControllerMemory& memory, const MachineOptions& options)
      : memory_(memory), options_(options) {}

  /// A line has written the messages; `before` is what they held.
  void MessagesWritten(double before, const EventListener& tell);
  /// Time passes.
  void Advance(double seconds, const EventListener& tell);
  void PowerOn() { secondsLeft_ = 0; }

 private:
  ControllerMemory& memory_;
  const MachineOptions& options_;
  double secondsLeft_ = 0;  ///< until they are down; 0 where they do not move
};

}  // namespace torvane::simulator
