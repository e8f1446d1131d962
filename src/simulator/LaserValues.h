// What the laser reports while it cuts: the values of the settings in force, each with the small
// changes of a live machine.
#pragma once

#include <map>

#include "simulator/ControllerMemory.h"

namespace torvane::simulator {

/// Between cuts the variables hold what settings and lines have written; during a cut they move
/// about that, the same way every time.
class LaserValues {
 public:
  /// A cut is under way since `seconds` of the run.
  void Show(ControllerMemory& memory, double seconds);
  /// No cut: back to what was written.
  void Settle(ControllerMemory& memory);
  /// A line has written a variable: that is what it moves about from now on.
  void Written(int number, double value);

 private:
  std::map<int, double> still_;  ///< what was written, of the variables that move now
};

}  // namespace torvane::simulator
