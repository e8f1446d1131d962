// Where a restart goes on: the restart text of the front end held against the slot's records.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "core/Slot.h"
#include "platform/FileSystem.h"
#include "simulator/Kinematics.h"

namespace torvane::simulator {

/// The rest of a split element, as its block says. Lengths mm.
struct RestElement {
  bool Arc = false;
  Position End;
  Position Centre;  ///< of an arc, from the split point
};

/// What the restart text says. Lengths mm.
struct RestartText {
  Position At;  ///< the point to go on from, on the programmed path
  std::optional<RestElement> Rest;
};

/// Reads RootDirectory + "Restart.tbx". Nothing when it is missing or names no position.
[[nodiscard]] std::optional<RestartText> ReadRestartText(const platform::FileSystem& files,
                                                         std::string_view root);

/// A place in the table.
struct RestartPoint {
  int Line = 0;      ///< table line to go on with
  double Along = 0;  ///< mm of its compensated element that are cut already
};

/// What a restart is asked for with.
struct RestartQuery {
  core::Slot Slot;
  /// The digits of the start line: a hundred-thousandth for each block number, so "00123" is N123;
  /// empty for a block without a number.
  std::string_view Fraction;
  RestartText Text;
  int ReachedLine = 0;  ///< table line that the run before had reached; 0 unknown
};

/// Finds the place. With the rest of an element: the element whose path holds the point, that ends
/// where the text says, and after which the block of the number comes. Without: the first record
/// of the block of the number, or of the next block that made one; where several laps fit, those
/// that begin at the point. Without a number: the first record of a block that begins at the point.
/// Of several places the one nearest to `ReachedLine` counts, and the later one of two as near.
/// Nothing when no record fits.
[[nodiscard]] std::optional<RestartPoint> FindRestartPoint(const platform::FileSystem& files,
                                                           std::string_view root,
                                                           const RestartQuery& query);

}  // namespace torvane::simulator
