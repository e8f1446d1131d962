// The lines of the listing around the running record, as the program view shows them.
#pragma once

#include <array>
#include <cstdint>

#include "core/ActiveProgram.h"
#include "core/DirectorySet.h"
#include "core/Slot.h"
#include "platform/FileSystem.h"
#include "supervision/MessageList.h"

namespace torvane::supervision {

/// Lines of the program view.
inline constexpr int ListingRows = 18;

using ListingView = std::array<ListRow, ListingRows>;

/// Which part of the listing shows: its first record, from 1, and the highlighted row, 0 none.
struct ListingWindow {
  int FirstRecord = 1;
  int HighlightedRow = 0;

  friend bool operator==(const ListingWindow&, const ListingWindow&) = default;
};

/// For running record `block` (0 none) and the line number that its record carries (0 unknown).
/// After the second line the window follows two records after the line number, with its second
/// row highlighted.
[[nodiscard]] ListingWindow ListingWindowOf(int block, int line);

/// The line number of record `block` + 1 of the slot's ".drw"; 0 where there is no such record.
[[nodiscard]] int ListingLine(platform::FileSystem& files, const core::DirectorySet& directories,
                              core::Slot slot, int block);

/// The rows of the view. All blank where `slot` is neither 1 nor 2, where it holds no program and
/// where it has no listing. Text is without the blanks around it.
[[nodiscard]] ListingView ShowRunningBlock(platform::FileSystem& files,
                                           const core::DirectorySet& directories,
                                           const core::BySlot<core::ActiveProgram>& programs,
                                           core::Slot slot, int block);

}  // namespace torvane::supervision
