// The path that the plot shows: the elements of a slot's record files, found by table line.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "partprogram/PathElement.h"
#include "platform/FileSystem.h"
#include "simulator/Kinematics.h"

namespace torvane::simulator {

using partprogram::PathElement;
using partprogram::RowFits;
using partprogram::RowType;
using partprogram::TableRow;
namespace PointAction = partprogram::PointAction;

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

}  // namespace torvane::simulator
