#include "supervision/CutTable.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>

#include "core/General.h"
#include "core/SlotFiles.h"
#include "platform/RuntimeFault.h"

namespace torvane::supervision {

namespace {

using partprogram::DrawRecord;
using partprogram::Figure;
namespace RecordCode = partprogram::RecordCode;

constexpr std::uint32_t FirstRecord = 2;  // the header is 1

double LengthOf(const DrawRecord& record) {
  double length = 0;
  if (record.Code == RecordCode::LineProfile) length = record[Figure::Length];
  if (record.Code == RecordCode::ArcProfile) length = record[Figure::ArcLength];
  return std::isfinite(length) && length > 0 ? length : 0;
}

/// The share of the line's length where the foot of the point lies, 0 to 1.
double ShareOfLine(const DrawRecord& line, double x, double y) {
  const double dx = line.EndPoint.X - line.StartPoint.X;
  const double dy = line.EndPoint.Y - line.StartPoint.Y;
  const double square = dx * dx + dy * dy;
  if (!(square > 0)) return 0;
  return ((x - line.StartPoint.X) * dx + (y - line.StartPoint.Y) * dy) / square;
}

/// The share of the arc's sweep at which the point is seen from the centre, 0 to 1.
double ShareOfArc(const DrawRecord& arc, double x, double y) {
  const double sweep = std::abs(arc[Figure::Sweep]);
  if (!(sweep > 0)) return 0;
  const double angle = core::XYToPolar(x - arc.CentrePoint.X, y - arc.CentrePoint.Y).Angle;
  const double turn = core::NormaliseAngle(
      arc[Figure::Sweep] < 0 ? arc[Figure::StartAngle] - angle : angle - arc[Figure::StartAngle]);
  // Outside of the sweep: the end that is nearer.
  if (turn > sweep) return turn - sweep < 360 - turn ? 1 : 0;
  return turn / sweep;
}

}  // namespace

double LengthUpTo(const DrawRecord& record, double x, double y) {
  if (!std::isfinite(x) || !std::isfinite(y)) return 0;
  double share = 0;
  if (record.Code == RecordCode::LineProfile) share = ShareOfLine(record, x, y);
  if (record.Code == RecordCode::ArcProfile) share = ShareOfArc(record, x, y);
  return std::isfinite(share) ? LengthOf(record) * std::clamp(share, 0.0, 1.0) : 0;
}

CutTable::CutTable(platform::FileSystem& files, const core::DirectorySet& directories,
                   core::Slot slot) {
  const std::string path = core::SlotFile(directories, slot, core::Extension::Kerf);
  try {
    if (files.FileExists(path)) file_ = files.OpenRecords(path, partprogram::DrawRecordSize);
  } catch (const platform::RuntimeFault&) {
    file_.reset();
  }
}

bool CutTable::ReadRecord(std::uint32_t number, DrawRecord& record) const {
  if (!file_) return false;
  std::array<char, partprogram::DrawRecordSize> bytes{};
  try {
    if (!file_->Read(number, bytes)) return false;
  } catch (const platform::RuntimeFault&) {
    return false;
  }
  record = partprogram::DecodeRecord(bytes);
  return true;
}

void CutTable::Read(int records) {
  for (; records > 0; --records) {
    DrawRecord record;
    const auto number = FirstRecord + static_cast<std::uint32_t>(rows_.size());
    if (number > static_cast<std::uint32_t>(std::numeric_limits<std::int16_t>::max())) return;
    if (!ReadRecord(number, record)) return;
    rows_.push_back({record.TableLine, record.BlockNumber, record.Code, whole_});
    whole_ += LengthOf(record);
  }
}

void CutTable::ReadAll() { Read(std::numeric_limits<int>::max()); }

/// The lines rise from record to record; a record without a line of its own has that of the one
/// before.
std::size_t CutTable::IndexOf(int line) const {
  const auto found =
      std::lower_bound(rows_.begin(), rows_.end(), line,
                       [](const Row& row, int wanted) { return row.TableLine < wanted; });
  return static_cast<std::size_t>(found - rows_.begin());
}

CutTable::Made CutTable::MadeBy(int line) const {
  const std::size_t index = IndexOf(line);
  if (line < 1 || index >= rows_.size()) return {};
  return {rows_[index].Code, rows_[index].Block};
}

double CutTable::CutUpTo(int line, double x, double y) const {
  if (line < 1) return 0;
  const std::size_t index = IndexOf(line);
  if (index >= rows_.size()) return whole_;
  const Row& row = rows_[index];
  DrawRecord record;
  if (!ReadRecord(FirstRecord + static_cast<std::uint32_t>(index), record)) return row.Before;
  return row.Before + LengthUpTo(record, x, y);
}

double CutTable::Whole() const { return whole_; }

}  // namespace torvane::supervision
