// How long a run takes, from the rows of its table and the figures of the machine.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>
#include <vector>

#include "core/RunFigures.h"
#include "partprogram/DrawRecord.h"

namespace torvane::partprogram {

/// How the switches of the machine are set during the run.
struct RunSwitches {
  double OverridePercent = 100;  ///< of the cutting feed, above 0; moves keep their rate
  bool Skip1 = false;            ///< rows of block skip 1 are left out
  bool Skip2 = false;
};

/// What is cut from the beam on to the beam off.
struct Contour {
  std::int16_t Block = 0;     ///< line of the main file of its first element
  std::int16_t SubBlock = 0;  ///< line of the subroutine, 0 in the main file
  int Record = 0;             ///< the first element's, of ".krw"; 0 where there are no records
  double Length = 0;          ///< mm
  double Seconds = 0;         ///< with its piercing, dwells and ways between its elements
};

struct RunEstimate {
  double CutSeconds = 0;
  double MoveSeconds = 0;
  double DwellSeconds = 0;
  double MachineSeconds = 0;  ///< piercing, clamps, repositions
  double CutLength = 0;       ///< mm; with arcs that are run at feed without the beam
  double MoveLength = 0;      ///< mm
  int Stops = 0;              ///< program stops; the operator's time there is not counted
  int Skipped = 0;            ///< rows left out
  /// Line of the table that is no row: the machine would wait there, and nothing after it counts;
  /// 0 none.
  int BrokenLine = 0;
  std::vector<Contour> Contours;  ///< in the order of the run

  /// What the run time of the cycle shows at its end.
  [[nodiscard]] double Seconds() const {
    return CutSeconds + MoveSeconds + DwellSeconds + MachineSeconds;
  }
};

/// The table lines, and the records that they were made of: a row says where a line starts, its
/// record where it ends. Without records, and from a row on that does not fit its record, the head
/// goes by the rows alone.
struct RunTable {
  std::string_view Text;             ///< of ".tbx"
  std::span<const DrawRecord> Kerf;  ///< of ".krw", the header first
};

/// A cut that continues its predecessor without a stop is one motion with it; all else begins and
/// ends at rest. Lines that the controller would have to wait for are taken to be there.
[[nodiscard]] RunEstimate EstimateRun(const RunTable& table, const core::RunFigures& figures,
                                      const RunSwitches& switches);

/// The contours that take longest, no more than `count`, the longest first; of equals the earlier.
[[nodiscard]] std::vector<Contour> LongestContours(const RunEstimate& estimate, std::size_t count);

}  // namespace torvane::partprogram
