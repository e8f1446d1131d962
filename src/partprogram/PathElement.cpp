#include "partprogram/PathElement.h"

#include <algorithm>
#include <cmath>
#include <iterator>
#include <numbers>

namespace torvane::partprogram {

namespace {

constexpr double PointTolerance = 0.001;  // mm; a row holds its points to four places
constexpr int NoRecord = -1;              // the code of a damaged record, which no row fits

Position ToPosition(const Point3& point) { return {point.X, point.Y, point.Z}; }

/// A damaged record must not send the machine nowhere.
bool Sound(const PathElement& element) {
  constexpr double Farthest = 1e7;  // mm, far beyond any machine
  const double values[] = {element.Start.X,    element.Start.Y, element.Start.Z,  element.End.X,
                           element.End.Y,      element.End.Z,   element.Centre.X, element.Centre.Y,
                           element.StartAngle, element.Sweep};
  return std::all_of(std::begin(values), std::end(values),
                     [](double value) { return std::abs(value) <= Farthest; });
}

bool Same(double x, double y, const Position& point) {
  return std::abs(x - point.X) <= PointTolerance && std::abs(y - point.Y) <= PointTolerance;
}

double Degrees(double radians) { return radians * 180.0 / std::numbers::pi; }

/// The arc of a row, from where the machine is.
Segment RowArc(const TableRow& row, const Position& from) {
  const Position to{from.X + row.X, from.Y + row.Y, from.Z};
  const Position centre{from.X + row.I, from.Y + row.J, from.Z};
  const double start = Degrees(std::atan2(-row.J, -row.I));
  double sweep = Degrees(std::atan2(row.Y - row.J, row.X - row.I)) - start;
  const bool negative = row.Type == RowType::ArcNegative;
  if (negative && sweep >= 0) sweep -= 360.0;
  if (!negative && sweep <= 0) sweep += 360.0;
  return Segment::Arc(from, to, centre, start, sweep);
}

}  // namespace

PathElement ToElement(int number, const DrawRecord& record) {
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
    element.StartAngle = record[Figure::StartAngle];
    element.Sweep = record[Figure::Sweep];
  }
  if (!Sound(element)) element = {number, NoRecord, 0, 0, record.TableLine, {}, {}, {}, 0, 0};
  return element;
}

Segment PathElement::Path() const {
  if (Code == RecordCode::ArcProfile) return Segment::Arc(Start, End, Centre, StartAngle, Sweep);
  return Segment::Line(Start, End);
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
      // A dwell too short for its two places is a row without an action: a move to its own point.
      return row.Action != PointAction::None || element.Code == RecordCode::Dwell;
    default:
      return true;
  }
}

Position PointTarget(const TableRow& row, const PathElement* element) {
  if (element != nullptr && element->Code == RecordCode::Move) return element->End;
  if (element != nullptr && element->Code == RecordCode::LoadPosition) return element->Centre;
  return {row.X, row.Y, row.Z};
}

Segment RowPath(const TableRow& row, const Position& from) {
  if (row.Type == RowType::Line) return Segment::Line(from, {row.X, row.Y, row.Z});
  return RowArc(row, from);
}

}  // namespace torvane::partprogram
