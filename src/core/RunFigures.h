// What the machine takes for each thing that a run is made of: the figures of a time estimate.
#pragma once

#include <string_view>

namespace torvane::core {

/// Without a file, those of the simulated machine.
struct RunFigures {
  double RapidRate = 30000;      ///< of a move, mm per minute
  double DefaultFeed = 1000;     ///< of a cut where the program gave no feed, mm per minute
  double RapidAcceleration = 0;  ///< mm/s²; 0: moves have their rate at once
  double CutAcceleration = 0;    ///< mm/s²; 0: cuts have their feed at once
  double PierceSeconds = 0;      ///< at the first element of each contour
  double ClampSeconds = 1;       ///< clamps opened or closed
  double RepositionSeconds = 3;  ///< a reposition, and a sheet turned over
  double StartX = 0;             ///< where the head is at the cycle start, mm
  double StartY = 0;
};

/// A file of figures: lines of a name, a colon and a number, in any order; what is not in it keeps
/// its value. ";" begins a remark. `path` is named in a fault. Throws RuntimeFault for a line
/// without a colon, a name that is none or comes twice, and a number that is none or out of range.
[[nodiscard]] RunFigures ReadRunFigures(std::string_view text, std::string_view path);

}  // namespace torvane::core
