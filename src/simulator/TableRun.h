// Runs the rows of a table: fetches them line by line and turns each into jobs.
#pragma once

#include <array>
#include <memory>
#include <optional>
#include <span>
#include <vector>

#include "core/Slot.h"
#include "platform/FileSystem.h"
#include "simulator/ControllerMemory.h"
#include "simulator/Kinematics.h"
#include "simulator/MachineEvents.h"
#include "simulator/PathFile.h"
#include "simulator/RestartPlan.h"
#include "simulator/TableRing.h"

namespace torvane::simulator {

/// What became of the next line.
enum class RowOutcome {
  Executed,  ///< its jobs have been added
  Skipped,   ///< by a block skip
  Waiting,   ///< it has not been received yet
  Missing,   ///< it was lost, or gone over, or is no row
  Finished   ///< the end row
};

/// The rows carry where a line starts but not where it ends, so with a root directory the machine
/// follows the record that the row was made of; without one, or where row and record disagree, it
/// moves by the rows alone: a line goes to the point of its row, an arc counts from where the
/// machine is.
///
/// A second run of a program whose first line still is in the ring starts from there again; a
/// program that has gone over its own beginning must be sent afresh, and is refused.
class TableRun {
 public:
  TableRun(ControllerMemory& memory, const MachineOptions& options);

  /// Rows have come. `running`: a cycle of this run is open.
  void Written(int index, int count, bool running);
  /// The front end has named a slot's table.
  void Selected(core::Slot slot);

  /// Starts at the first line. False when it is not in the ring.
  bool Begin(core::Slot slot);
  /// Goes on with a line. `linesSent` is what the restart table was closed with: lines up to there
  /// that the ring does not hold come from the slot's file, later ones are waited for; 0 where it
  /// was not given. Settings that are in front of the line are put in force. Throws RuntimeFault
  /// where a root directory was given and the file cannot be opened.
  void Continue(core::Slot slot, const RestartPoint& point, int linesSent);
  /// As after switching on.
  void PowerOn();

  /// Takes the next line.
  [[nodiscard]] RowOutcome Next(const Position& from, Mover& mover);

  /// Line reached, from 1; 0 before the first.
  [[nodiscard]] int Line() const { return line_; }
  [[nodiscard]] core::Slot Slot() const { return slot_; }
  /// Line that the last run of a slot has reached since switching on; 0 none.
  [[nodiscard]] int Reached(core::Slot slot) const { return reached_[slot]; }
  /// Record of the line in hand in ".krw", 0 where the machine moves by the rows alone.
  [[nodiscard]] int Record() const { return record_; }
  /// Block skip level of the line in hand.
  [[nodiscard]] int SkipLevel() const { return skip_; }
  [[nodiscard]] int NewestLine() const { return Ring().NewestLine(); }
  /// Line whose row and record disagreed, reported once; 0 none.
  [[nodiscard]] int TakePathRefusal();
  /// A root directory was given, but the slot's records could not be read.
  [[nodiscard]] bool PathMissing() const { return pathMissing_; }

 private:
  [[nodiscard]] const TableRing& Ring() const { return rings_[slot_]; }
  [[nodiscard]] TableRing& Ring() { return rings_[slot_]; }
  void Open(core::Slot slot);
  [[nodiscard]] RowOutcome Fetch(int line, std::span<const double>& values);
  [[nodiscard]] std::span<const double> StoredRow(int line);
  void ResumeRing(int linesSent);
  void ApplySettingsBefore(int line);
  [[nodiscard]] std::optional<Position> PositionBefore(int line) const;
  void GoTo(const Position& from, const Position& to, Mover& mover) const;
  void Wait(const Task& wait, const Position& from, Mover& mover);
  void Forget();
  [[nodiscard]] bool Skipped(const TableRow& row) const;
  [[nodiscard]] const PathElement* ElementOf(const TableRow& row, int line);
  void Perform(const TableRow& row, const PathElement* element, const Position& from, Mover& mover);
  void PerformPoint(const TableRow& row, const PathElement* element, const Position& from,
                    Mover& mover);
  void PerformCut(const TableRow& row, const PathElement* element, const Position& from,
                  Mover& mover);
  void ApplySettings(const TableRow& row);

  ControllerMemory& memory_;
  const MachineOptions& options_;
  core::BySlot<TableRing> rings_;
  PathFile path_;
  std::unique_ptr<platform::RecordFile> stored_;
  std::vector<double> storedValues_;
  int storedIndex_ = 0;  ///< of the row that was read last from the file
  core::Slot slot_;
  int line_ = 0;
  int program_ = 0;  ///< the ring's program when the run began
  int record_ = 0;
  int skip_ = 0;
  double along_ = 0;  ///< mm of the next element that were cut before a restart
  /// Where the machine is before the first line of a restart; gone once it has moved.
  std::optional<Position> place_;
  core::BySlot<int> reached_;
  int pathRefusal_ = 0;
  bool pathMissing_ = false;
};

}  // namespace torvane::simulator
