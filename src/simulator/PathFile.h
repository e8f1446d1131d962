// The path that the plot shows: the elements of a slot's record files, found by table line.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/FileSystem.h"
#include "simulator/Kinematics.h"
#include "simulator/TableRows.h"

namespace torvane::simulator {

/// One record, as far as the machine follows it.
struct PathElement {
  int Record = 0;  ///< its own number in its file; the header is 1
  int Code = 0;
  int BlockNumber = 0;
  int RecordIndex = 0;  ///< the record of the other file that belongs to it
  int TableLine = 0;    ///< lines of the table up to the end of this record
  Position Start;
  Position End;
  Position Centre;
  double StartAngle = 0;  ///< degrees
  double Sweep = 0;       ///< degrees

  /// The line or arc itself; a line for records that are no arc.
  [[nodiscard]] Segment Path() const;
};

class PathFile {
 public:
  /// The records after the header. False, with no elements, when the file is missing, cannot be
  /// read, or is no whole number of records.
  bool Load(const platform::FileSystem& files, const std::string& path);

  [[nodiscard]] bool Empty() const { return elements_.empty(); }
  [[nodiscard]] const std::vector<PathElement>& Elements() const { return elements_; }

  /// The element that table line `line` (from 1) belongs to; null beyond the last.
  [[nodiscard]] const PathElement* OfLine(int line) const;
  /// Null where the file has no such record.
  [[nodiscard]] const PathElement* OfRecord(int record) const;
  /// First table line of the element of record `record` (from 2); 0 when there is none.
  [[nodiscard]] int FirstLineOf(int record) const;

 private:
  std::vector<PathElement> elements_;
};

/// True when the row can be the one that was made of the element: its kind fits, and where a row
/// holds a point of the element it is that point.
[[nodiscard]] bool RowFits(const TableRow& row, const PathElement& element);

}  // namespace torvane::simulator
