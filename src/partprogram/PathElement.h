// What the machine follows of a record, held against the row of the table that was made of it.
#pragma once

#include "partprogram/DrawRecord.h"
#include "partprogram/PathSegment.h"
#include "partprogram/TableRows.h"

namespace torvane::partprogram {

/// Nearer than this the head is at the start of an element and needs no way there, mm.
inline constexpr double HopTolerance = 1e-4;

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

/// Record `number` of its file (the header is 1). A damaged one fits no row.
[[nodiscard]] PathElement ToElement(int number, const DrawRecord& record);

/// True when the row can be the one that was made of the element: its kind fits, and where a row
/// holds a point of the element it is that point.
[[nodiscard]] bool RowFits(const TableRow& row, const PathElement& element);

/// Where a point row without an action sends the head, whose element it may know: a row holds its
/// points to four places only, and a move goes to the element's end.
[[nodiscard]] Position PointTarget(const TableRow& row, const PathElement* element);

/// The line or arc of a row by itself, from where the head is: a line goes to the point of its row,
/// an arc counts from the head.
[[nodiscard]] Segment RowPath(const TableRow& row, const Position& from);

}  // namespace torvane::partprogram
