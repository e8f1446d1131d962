// A restart at a block of the listing, and what both kinds of restart read of a slot.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "core/System.h"
#include "partprogram/SplittingModule.h"
#include "platform/FileSystem.h"
#include "restart/GatherModule.h"
#include "restart/RestartOperation.h"
#include "restart/VisualWalk.h"
#include "supervision/OperatorDialogs.h"
#include "supervision/RunJournal.h"

namespace torvane::restart {

/// Bytes of a record of the listing.
inline constexpr std::size_t ListingRecordSize = 80;

/// What a choice of the restart point works with.
struct ChoiceParts {
  core::System& System;
  platform::FileSystem& Files;
  supervision::OperatorDialogs& Dialogs;
  GatherModule& Gather;
  RestartStates& States;
  partprogram::SplitCycle& Split;
  /// Knows where the last run ended once the controller does not; may be null.
  const supervision::RunJournal* Journal = nullptr;
};

/// The slot in force has the files without which it cannot be restarted.
[[nodiscard]] bool RestartFilesExist(const platform::FileSystem& files, const core::System& system);

/// The listing of the slot in force: each record of ".rnd", trimmed. A missing file is a
/// RuntimeFault.
[[nodiscard]] std::vector<std::string> ReadListing(platform::FileSystem& files,
                                                   const core::System& system);

/// One line of it, counted from 1; empty past its end.
[[nodiscard]] std::string ListingLine(platform::FileSystem& files, const core::System& system,
                                      int line);

/// The records of the slot in force, read from ".drw" as they are asked for.
[[nodiscard]] PlotRecords OpenPlotRecords(platform::FileSystem& files, const core::System& system);

/// Gathers for the slot in force.
void GatherForSlot(const ChoiceParts& parts, const GatherTarget& target, GatherState& state);

/// The two states are cleared, and what a split left.
void ClearRestart(const ChoiceParts& parts);

/// A row of a list and the row at its top, from 0; -1 in an empty list.
struct ListPosition {
  int Selected = -1;
  int Top = 0;
};

/// Selection and top row a page of 20 rows on or back: the one held within the list, the other to
/// the count less 21 at most.
[[nodiscard]] ListPosition MovePage(ListPosition at, int count, bool up);

/// BlockStartForm without its window.
class BlockRestart {
 public:
  explicit BlockRestart(const ChoiceParts& parts) : parts_(parts) {}

  /// The form comes up: the rows of its list.
  [[nodiscard]] std::vector<std::string> Begin();

  /// SelectButton on a row, from 0: the states at that block and at the one after it. False after
  /// the warning of a machine that is busy: the screen stays.
  [[nodiscard]] bool Select(int row);

  /// The form has gone. True when a restart follows.
  [[nodiscard]] bool Unload();

  /// The row of the record that ran last, from 0; -1 where nothing ran. It is marked in the list,
  /// never selected. By the controller's counter; where the controller has been switched off since,
  /// by the journal's last run of this very program, if that did not come to its end.
  [[nodiscard]] int LastRunRow() const;

 private:
  [[nodiscard]] int RowOfLine(std::int16_t line) const;
  void GatherRow(int row, GatherState& state);

  ChoiceParts parts_;
  std::vector<std::string> rows_;
};

}  // namespace torvane::restart
