// Runs the rows of a table: fetches them line by line and turns each into jobs.
#pragma once

#include <array>
#include <memory>
#include <optional>
#include <vector>

#include "platform/FileSystem.h"
#include "simulator/ControllerMemory.h"
#include "simulator/Kinematics.h"
#include "simulator/MachineEvents.h"
#include "simulator/PathFile.h"
#include "simulator/RestartPlan.h"
#include "simulator/TableRing.h"
#include "simulator/TableRows.h"

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
/// machine stands.
///
/// A second run of a program whose first line still stands in the ring starts from there again; a
/// program that has gone over its own beginning must be sent afresh, and is refused.
class TableRun {
 public:
  TableRun(ControllerMemory& memory, const MachineOptions& options);

  /// Rows have come. `running`: a cycle of this run stands open.
  void Written(int index, int count, bool running);
  /// The front end has named a slot's table.
  void Selected(int slot);

  /// Starts at the first line. False when it does not stand in the ring.
  bool Begin(int slot);
  /// Goes on with a line; lines that the ring no longer holds come from the slot's file. Throws
  /// RuntimeFault where a root directory was told and the file cannot be opened.
  void Continue(int slot, const RestartPoint& point);

  /// Takes the next line.
  [[nodiscard]] RowOutcome Next(const Position& from, Mover& mover);

  /// Line reached, from 1; 0 before the first.
  [[nodiscard]] int Line() const { return line_; }
  [[nodiscard]] int Slot() const { return slot_; }
  [[nodiscard]] int NewestLine() const { return Ring().NewestLine(); }
  /// Line whose row and record disagreed, told once; 0 none.
  [[nodiscard]] int TakePathRefusal();
  /// A root directory was told, but the slot's records could not be read.
  [[nodiscard]] bool PathMissing() const { return pathMissing_; }

 private:
  [[nodiscard]] const TableRing& Ring() const {
    return rings_[static_cast<std::size_t>(slot_ - 1)];
  }
  [[nodiscard]] TableRing& Ring() { return rings_[static_cast<std::size_t>(slot_ - 1)]; }
  void Open(int slot);
  [[nodiscard]] RowOutcome Fetch(int line, std::span<const double>& values);
  [[nodiscard]] std::span<const double> StoredRow(int line);
  [[nodiscard]] bool Skipped(const TableRow& row) const;
  [[nodiscard]] const PathElement* ElementOf(const TableRow& row, int line);
  void Perform(const TableRow& row, const PathElement* element, const Position& from, Mover& mover);
  void PerformPoint(const TableRow& row, const PathElement* element, const Position& from,
                    Mover& mover) const;
  void PerformCut(const TableRow& row, const PathElement* element, const Position& from,
                  Mover& mover);
  void ApplySettings(const TableRow& row);

  ControllerMemory& memory_;
  const MachineOptions& options_;
  std::array<TableRing, 2> rings_;
  PathFile path_;
  std::unique_ptr<platform::RecordFile> stored_;
  std::vector<double> storedValues_;
  int slot_ = 1;
  int line_ = 0;
  int program_ = 0;   ///< the ring's program when the run began
  double share_ = 0;  ///< of the next element, cut before a restart
  int pathRefusal_ = 0;
  bool pathMissing_ = false;
};

}  // namespace torvane::simulator
