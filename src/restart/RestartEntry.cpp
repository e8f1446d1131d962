#include "restart/RestartEntry.h"

#include <algorithm>
#include <cmath>

namespace torvane::restart {

using core::Vector2;
using partprogram::DrawRecord;
using partprogram::Figure;
namespace RecordCode = partprogram::RecordCode;

namespace {

constexpr double PositionTolerance = 0.01;  // mm

Vector2 Plane(const partprogram::Point3& point) { return {point.X, point.Y}; }

double Distance(Vector2 a, Vector2 b) { return std::hypot(a.X - b.X, a.Y - b.Y); }

/// Settings, clamps and load positions have no start: theirs is the position they are reached at.
Vector2 StartOf(const DrawRecord& record) {
  switch (record.Code) {
    case RecordCode::Settings:
    case RecordCode::LoadPosition:
    case RecordCode::OpenClamps:
    case RecordCode::CancelOffsets:
    case RecordCode::FlipRotate:
      return Plane(record.CentrePoint);
    default:
      return Plane(record.StartPoint);
  }
}

std::int16_t FirstTableLine(std::span<const DrawRecord> kerf, std::int16_t record) {
  return static_cast<std::int16_t>(
      record <= 2 ? 1 : kerf[static_cast<std::size_t>(record) - 2].TableLine + 1);
}

std::optional<RestartEntry> EntryOf(const RecordPair& records, std::size_t drawIndex) {
  const DrawRecord& draw = records.Draw[drawIndex];
  const std::int16_t record = draw.RecordIndex;
  if (record < 2 || static_cast<std::size_t>(record) > records.Kerf.size()) return std::nullopt;
  const DrawRecord& kerf = records.Kerf[static_cast<std::size_t>(record) - 1];
  RestartEntry entry;
  entry.DrawRecord = static_cast<std::int16_t>(drawIndex + 1);
  entry.Record = record;
  entry.TableLine = FirstTableLine(records.Kerf, record);
  entry.Programmed = StartOf(draw);
  entry.Compensated = StartOf(kerf);
  entry.Code = draw.Code;
  return entry;
}

Vector2 ProjectOnLine(Vector2 from, Vector2 to, Vector2 point) {
  const double dx = to.X - from.X;
  const double dy = to.Y - from.Y;
  const double square = dx * dx + dy * dy;
  if (square == 0) return from;
  const double share =
      std::clamp(((point.X - from.X) * dx + (point.Y - from.Y) * dy) / square, 0.0, 1.0);
  return {from.X + share * dx, from.Y + share * dy};
}

Vector2 ProjectOnArc(const DrawRecord& arc, Vector2 point) {
  const Vector2 centre = Plane(arc.CentrePoint);
  const double sweep = arc[Figure::Sweep];
  const double angle = core::XYToPolar(point.X - centre.X, point.Y - centre.Y).Angle;
  const double turn = core::NormaliseAngle(sweep < 0 ? arc[Figure::StartAngle] - angle
                                                     : angle - arc[Figure::StartAngle]);
  if (turn > std::abs(sweep)) {
    const Vector2 start = Plane(arc.StartPoint);
    const Vector2 end = Plane(arc.EndPoint);
    return Distance(start, point) <= Distance(end, point) ? start : end;
  }
  const Vector2 offset = core::PolarToXY(arc[Figure::Radius], angle);
  return {centre.X + offset.X, centre.Y + offset.Y};
}

}  // namespace

Vector2 ProjectOn(const DrawRecord& element, Vector2 point) {
  switch (element.Code) {
    case RecordCode::LineProfile:
    case RecordCode::Move:
      return ProjectOnLine(Plane(element.StartPoint), Plane(element.EndPoint), point);
    case RecordCode::ArcProfile:
      return ProjectOnArc(element, point);
    default:
      return StartOf(element);
  }
}

std::optional<RestartEntry> EntryOfBlock(const RecordPair& records, std::int16_t block,
                                         std::int16_t subBlock, Vector2 position) {
  const auto made = [&](const DrawRecord& record, std::int16_t by) {
    return record.BlockNumber == by && (subBlock == 0 || record.SubBlock == subBlock);
  };
  std::optional<std::size_t> first;
  std::optional<std::size_t> later;
  std::int16_t before = 0;  // of the record in front: each lap of a block begins anew
  for (std::size_t i = 1; i < records.Draw.size(); ++i) {
    const DrawRecord& record = records.Draw[i];
    if (made(record, block)) {
      const bool begins = subBlock > 0 || before != block;
      if (begins && Distance(StartOf(record), position) <= PositionTolerance) {
        return EntryOf(records, i);
      }
      if (!first) first = i;
    }
    if (!later && record.BlockNumber > block) later = i;
    before = record.BlockNumber;
  }
  if (!first) first = later;
  return first ? EntryOf(records, *first) : std::nullopt;
}

std::optional<RestartEntry> EntryOfSplit(const RecordPair& records, std::int16_t number,
                                         Vector2 splitPoint, bool whole) {
  if (number < 2 || static_cast<std::size_t>(number) > records.Draw.size()) return std::nullopt;
  auto entry = EntryOf(records, static_cast<std::size_t>(number) - 1);
  if (!entry || whole) return entry;
  entry->Programmed = splitPoint;
  entry->Compensated =
      ProjectOn(records.Kerf[static_cast<std::size_t>(entry->Record) - 1], splitPoint);
  return entry;
}

}  // namespace torvane::restart
