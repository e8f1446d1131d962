// Who looks on while the poll runs: hears of each tick, and asks the controller nothing.
#pragma once

#include <cstdint>
#include <string>

#include "core/ActiveProgram.h"
#include "core/Slot.h"

namespace torvane::supervision {

/// A tick that has run to its end, beside what it left in core::MachineState.
struct TickReading {
  /// An exchange of the tick has failed: its zeros are not the controller's.
  bool Blind = false;
  /// VR(52) as this tick read it, s. The shared record may have been set back meanwhile by a
  /// redrawn plot.
  float RunSeconds = 0;
  /// The messages of the controller, where the message screen has them read; empty otherwise.
  std::string Messages;
};

/// The counters of a slot were read and take the place of those in the shared record.
struct BatchReading {
  core::Slot Slot;
  core::Batch Before;  ///< those in the shared record
  core::Batch Read;
  bool Good = false;  ///< no exchange has failed
};

/// Where a restart goes on.
struct RestartPlace {
  int Block = 0;  ///< line of the listing
  double X = 0;   ///< mm
  double Y = 0;
};

/// Called from the poll, the restart and the end of the program. None of it may wait or throw.
class PollObserver {
 public:
  virtual ~PollObserver() = default;

  virtual void TickRead(const TickReading& tick) = 0;
  virtual void BatchRead(const BatchReading& /*reading*/) {}
  /// The run that has just begun is a restart: the controller has taken its start line.
  virtual void RunContinued(const RestartPlace& /*place*/) {}
  /// The program ends in order; no tick follows. `unheard`: nothing has been heard of the
  /// controller since the last tick.
  virtual void ConsoleEnds(bool /*unheard*/) {}
};

}  // namespace torvane::supervision
