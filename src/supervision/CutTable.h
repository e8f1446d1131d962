// How much of a program has been cut when the controller has reached a line of its table.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "core/DirectorySet.h"
#include "core/Slot.h"
#include "partprogram/DrawRecord.h"
#include "platform/FileSystem.h"

namespace torvane::supervision {

/// mm of a line or an arc up to the point of it nearest to (x, y); 0 of any other record.
[[nodiscard]] double LengthUpTo(const partprogram::DrawRecord& record, double x, double y);

/// The lines and arcs of the compensated path of one slot, which are what runs with the beam on.
/// Read piece by piece, so that no tick of the poll reads a long program at once. A file that
/// cannot be read is a table without records.
class CutTable {
 public:
  CutTable() = default;
  CutTable(platform::FileSystem& files, const core::DirectorySet& directories, core::Slot slot);

  /// Reads up to `records` more; nothing once all are read.
  void Read(int records);
  /// Reads what is left.
  void ReadAll();

  /// The record that made table line `line` (from 1), as far as read: its code and the line of the
  /// listing that made it. Zeros where there is none, as for the end line.
  struct Made {
    std::int16_t Code = 0;
    std::int16_t Block = 0;
  };
  [[nodiscard]] Made MadeBy(int line) const;

  /// mm of all lines and arcs before table line `line`, and of its own up to (x, y).
  [[nodiscard]] double CutUpTo(int line, double x, double y) const;
  /// mm of the whole program.
  [[nodiscard]] double Whole() const;

 private:
  struct Row {
    std::int16_t TableLine = 0;  ///< the last one that the record made
    std::int16_t Block = 0;
    std::int16_t Code = 0;
    double Before = 0;  ///< cut before the record, mm
  };
  [[nodiscard]] std::size_t IndexOf(int line) const;
  [[nodiscard]] bool ReadRecord(std::uint32_t number, partprogram::DrawRecord& record) const;

  std::unique_ptr<platform::RecordFile> file_;
  std::vector<Row> rows_;  ///< from record 2 on
  double whole_ = 0;       ///< of what has been read
};

}  // namespace torvane::supervision
