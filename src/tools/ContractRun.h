// The run of a harmless program: a millimetre to and fro at the rapid rate, with dwells, the beam
// never on.
#pragma once

#include <string>
#include <vector>

#include "tools/ContractRest.h"
#include "tools/ContractSession.h"

namespace torvane::tools {

/// The program as lines of slot 2's table, from where the head is.
struct HarmlessProgram {
  HarmlessProgram(double x, double y);

  /// The line that ends it after the first `count` ones.
  [[nodiscard]] static std::string EndAfter(std::size_t count);

  /// mm from where it begins.
  [[nodiscard]] double DistanceTo(double x, double y) const;

  std::vector<std::string> Lines;
  double X = 0;  ///< mm, where it begins and ends
  double Y = 0;
  double DwellSeconds = 0;  ///< of all its dwells
};

/// How many of its lines go out before the run, and are ahead of the running record in it.
inline constexpr int LinesAhead = 10;

/// mm from where it begins; the head goes no farther in it.
inline constexpr double FarthestAllowed = 1.1;

/// How far the program has come, also where its run was broken off.
struct RunProgress {
  std::size_t Taken = 0;  ///< of its lines, by the table
  bool Open = false;      ///< it was seen to run, and neither to end nor to be stopped
  bool Ended = false;     ///< by itself
  bool Strange = false;   ///< something else was seen to run
};

[[nodiscard]] RunLeft LeftOf(const HarmlessProgram& program, const RunProgress& progress);

/// What was seen of the run.
struct RunSeen {
  bool Ended = false;        ///< by itself, after its last line
  std::string Danger;        ///< why the operator was asked for the stop at once
  std::string Refused;       ///< the table line that was refused while it ran
  bool RunningSeen = false;  ///< bit 16384 while it ran
  bool RunningLeft = false;  ///< the bit still there after its end
  double Record = 0;         ///< VR(81), the highest
  bool RecordFell = false;
  double SecondsBefore = 0;  ///< VR(52) before the start, and when it ended
  double SecondsAfter = 0;
  bool SecondsFell = false;
  bool SecondsRose = false;
  double Farthest = 0;     ///< mm, from where it began
  double EndDistance = 0;  ///< mm, from there at its end
  double Counted = 0;      ///< VR(85) after it, 0 before
};

/// Asks for the cycle start, sends the other lines while it runs and looks at everything. A run
/// that does not end is ended by the operator, who is asked for the stop: at once where the beam is
/// on or the head leaves the way of the program. Throws NotTried where no cycle start comes. One
/// that was asked for and not seen is not wanted any more when this ends.
/// `progress` is kept also where this throws.
[[nodiscard]] RunSeen RunHarmlessProgram(ContractSession& session, const HarmlessProgram& program,
                                         RunProgress& progress);

}  // namespace torvane::tools
