// Which rows are in one slot's ring of table indices, and what line of the program each one is.
#pragma once

#include <array>
#include <deque>
#include <span>

#include "partprogram/TableRows.h"

namespace torvane::simulator {

using partprogram::LongestRow;

/// One received row, as it came.
struct RingRow {
  int Index = 0;      ///< where its first value is in the table
  int Count = 0;      ///< values; more than LongestRow are counted but not kept
  bool Whole = true;  ///< false when another write has gone over a part of it
  std::array<double, LongestRow> Values{};

  /// Empty for a row too long to be one.
  [[nodiscard]] std::span<const double> Read() const {
    if (static_cast<std::size_t>(Count) > LongestRow) return {};
    return std::span(Values).first(static_cast<std::size_t>(Count));
  }
};

/// Follows the writer: rows come in the order of their lines, each right after the one before,
/// and back to the first index when the one before has gone beyond the last. So a line number needs
/// no place in a row, and what an earlier lap left behind is never taken for new.
///
/// A row at the first index where it is not due begins a program. Where it is due as well (the row
/// before happens to have gone beyond the last index) it may be either; `Select` settles that, for
/// the front end always names the table after the first rows of a program.
class TableRing {
 public:
  TableRing(int firstIndex, int lastIndex);

  /// True when a write at `index` belongs to this ring.
  [[nodiscard]] bool Holds(int index) const { return index >= first_ && index <= last_; }
  /// True when `index` is where the next row of the program is due.
  [[nodiscard]] bool Due(int index) const { return index == DueIndex(); }

  /// A row was written. `running` tells that this ring's program runs, so that nothing but the next
  /// lap can be at the first index.
  void Written(int index, std::span<const double> values, bool running);

  /// The front end has named this ring's table: rows since the last possible beginning count
  /// from 1.
  void Select();
  /// The ring is to go on after line `line`, whose row ended in front of index `due`: whatever
  /// is here is forgotten.
  void Resume(int line, int due);
  /// A run begins: an undecided beginning was the next lap.
  void Settle() { mark_ = 0; }

  /// Number of the oldest line that still is here whole, and of the newest; 0 and 0 when none.
  [[nodiscard]] int OldestLine() const;
  [[nodiscard]] int NewestLine() const { return newest_; }
  /// A line went missing after the newest one: what came after it has no known number.
  [[nodiscard]] bool Broken() const { return broken_; }
  /// Grows when another program begins.
  [[nodiscard]] int Programs() const { return programs_; }

  /// Null when the line is not here whole.
  [[nodiscard]] const RingRow* Row(int line) const;

 private:
  [[nodiscard]] int DueIndex() const { return due_ > last_ ? first_ : due_; }
  void Begin();
  void GoOver(int index, int count);

  int first_;
  int last_;
  std::deque<RingRow> rows_;
  int newest_ = 0;  ///< line number of rows_.back()
  int due_;         ///< where the newest row ended
  int mark_ = 0;    ///< line that may be the first of another program, 0 none
  int programs_ = 0;
  bool broken_ = false;
};

}  // namespace torvane::simulator
