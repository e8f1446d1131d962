// Where a restart goes on: the restart text of the front end held against the slot's records.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "platform/FileSystem.h"
#include "simulator/Kinematics.h"

namespace torvane::simulator {

/// What the restart text says. Lengths mm.
struct RestartText {
  Position At;                         ///< the machine goes there first
  std::optional<Position> ElementEnd;  ///< end of the rest of a split element
};

/// Reads RootDirectory + "Restart.tbx". Nothing when it is missing or names no position.
[[nodiscard]] std::optional<RestartText> ReadRestartText(const platform::FileSystem& files,
                                                         std::string_view root);

/// A place in the table.
struct RestartPoint {
  int Line = 0;      ///< table line to go on with
  double Share = 0;  ///< of its element that is cut already, 0 to 1
};

/// Finds the block. `fraction` holds the digits of the start line: a hundred-thousandth for each
/// block number, so "00123" is N123. With a number the first record made by that block counts;
/// after a split, the element before it that holds the point and ends where the text says. Without
/// a number the first record that starts at the position. Nothing when no record fits.
[[nodiscard]] std::optional<RestartPoint> FindRestartPoint(const platform::FileSystem& files,
                                                           std::string_view root, int slot,
                                                           std::string_view fraction,
                                                           const RestartText& text);

}  // namespace torvane::simulator
