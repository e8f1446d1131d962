#include "simulator/PathFile.h"

#include <algorithm>
#include <cmath>

#include "partprogram/DrawRecord.h"
#include "platform/RuntimeFault.h"

namespace torvane::simulator {

namespace {

namespace RecordCode = partprogram::RecordCode;

constexpr double PointTolerance = 0.001;  // mm; a row holds its points to four places
constexpr int FirstRecord = 2;            // after the header
constexpr int NoRecord = -1;              // the code of a damaged record, which no row fits

Position ToPosition(const partprogram::Point3& point) { return {point.X, point.Y, point.Z}; }

/// A damaged record must not send the machine nowhere.
bool Sound(const PathElement& element) {
  constexpr double Farthest = 1e7;  // mm, far beyond any machine
  const double values[] = {element.Start.X,    element.Start.Y, element.Start.Z,  element.End.X,
                           element.End.Y,      element.End.Z,   element.Centre.X, element.Centre.Y,
                           element.StartAngle, element.Sweep};
  return std::all_of(std::begin(values), std::end(values),
                     [](double value) { return std::abs(value) <= Farthest; });
}

PathElement ToElement(int number, const partprogram::DrawRecord& record) {
  PathElement element;
  element.Record = number;
  element.Code = record.Code;
  element.BlockNumber = record.BlockNumber;
  element.RecordIndex = record.RecordIndex;
  element.TableLine = record.TableLine;
  element.Start = ToPosition(record.StartPoint);
  element.End = ToPosition(record.EndPoint);
  element.Centre = ToPosition(record.CentrePoint);
  if (record.Code == RecordCode::ArcProfile) {
    element.StartAngle = record[partprogram::Figure::StartAngle];
    element.Sweep = record[partprogram::Figure::Sweep];
  }
  if (!Sound(element)) element = {number, NoRecord, 0, 0, record.TableLine, {}, {}, {}, 0, 0};
  return element;
}

bool Same(double x, double y, const Position& point) {
  return std::abs(x - point.X) <= PointTolerance && std::abs(y - point.Y) <= PointTolerance;
}

}  // namespace

Segment PathElement::Path() const {
  if (Code == RecordCode::ArcProfile) return Segment::Arc(Start, End, Centre, StartAngle, Sweep);
  return Segment::Line(Start, End);
}

bool PathFile::Load(const platform::FileSystem& files, const std::string& path) {
  elements_.clear();
  std::string bytes;
  try {
    bytes = files.ReadFile(path);
  } catch (const platform::RuntimeFault&) {
    return false;  // the machine goes by the rows, and says so
  }
  constexpr std::size_t Size = partprogram::DrawRecordSize;
  if (bytes.empty() || bytes.size() % Size != 0) return false;
  elements_.reserve(bytes.size() / Size - 1);
  for (std::size_t at = Size; at < bytes.size(); at += Size) {
    const auto number = static_cast<int>(elements_.size()) + FirstRecord;
    const std::span<const char, Size> record(bytes.data() + at, Size);
    elements_.push_back(ToElement(number, partprogram::DecodeRecord(record)));
  }
  return true;
}

const PathElement* PathFile::OfLine(int line) const {
  const auto at = std::lower_bound(
      elements_.begin(), elements_.end(), line,
      [](const PathElement& element, int wanted) { return element.TableLine < wanted; });
  return at == elements_.end() ? nullptr : &*at;
}

const PathElement* PathFile::OfRecord(int record) const {
  const int index = record - FirstRecord;
  if (index < 0 || static_cast<std::size_t>(index) >= elements_.size()) return nullptr;
  return &elements_[static_cast<std::size_t>(index)];
}

int PathFile::FirstLineOf(int record) const {
  if (OfRecord(record) == nullptr) return 0;
  const PathElement* before = OfRecord(record - 1);
  return before == nullptr ? 1 : before->TableLine + 1;
}

bool RowFits(const TableRow& row, const PathElement& element) {
  switch (row.Type) {
    case RowType::Line:
      return element.Code == RecordCode::LineProfile && Same(row.X, row.Y, element.Start);
    case RowType::ArcNegative:
    case RowType::ArcPositive:
      return element.Code == RecordCode::ArcProfile &&
             Same(row.X, row.Y,
                  {element.End.X - element.Start.X, element.End.Y - element.Start.Y}) &&
             Same(row.I, row.J,
                  {element.Centre.X - element.Start.X, element.Centre.Y - element.Start.Y});
    case RowType::Settings:
    case RowType::SettingsPair:
      return element.Code == RecordCode::Settings;
    case RowType::Point:
      if (element.Code == RecordCode::Move) return Same(row.X, row.Y, element.End);
      if (element.Code == RecordCode::LoadPosition) return Same(row.X, row.Y, element.Centre);
      return row.Action != PointAction::None;
    default:
      return true;
  }
}

}  // namespace torvane::simulator
