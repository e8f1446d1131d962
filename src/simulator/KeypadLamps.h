// Variables of keys of the user keypad that change by themselves too: a fan that follows the
// beam, and whatever was put on the clock from the panel.
#pragma once

#include <vector>

#include "simulator/ControllerMemory.h"
#include "simulator/MachineEvents.h"

namespace torvane::simulator {

class KeypadLamps {
 public:
  explicit KeypadLamps(ControllerMemory& memory) : memory_(memory) {}

  /// Variable `number` takes `value` in `seconds`. False for a number that is none.
  bool Later(int number, double value, double seconds);

  /// Time passes; `cutting` while the beam is on.
  void Advance(double seconds, bool cutting, const EventListener& tell);
  /// Seconds to the next change of the clock, below 0 where there is none.
  [[nodiscard]] double NextIn() const;
  void PowerOn();

 private:
  struct Change {
    int Number = 0;
    double Value = 0;
    double SecondsLeft = 0;
  };
  void Put(int number, double value, const EventListener& tell);

  ControllerMemory& memory_;
  std::vector<Change> changes_;
  double fanLeft_ = 0;  ///< seconds that the fan runs on after the last cut
};

}  // namespace torvane::simulator
