#include "partprogram/Binding.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "core/General.h"

namespace torvane::partprogram {
namespace {

/// A station from this type on turns with its move and keeps the angle that it was given.
constexpr std::int16_t FirstTurningType = 10;

constexpr double PickMargin = 5.0;    ///< mm to each side
constexpr double SheetMargin = 20.0;  ///< mm to each side
constexpr double LeastWidth = 5.0;    ///< mm
constexpr double LengthShare = 5.0;   ///< least width of a box: its length over this

/// An arc's angles beyond this are no angles, and its box is that of its ends.
constexpr double LargestAngle = 1e6;

float Rounded(double value) { return static_cast<float>(core::RoundPlaces(value, 4)); }

/// Cosine and sine of the whole degrees, as PolarToXY has them for length 1.
struct DegreeTable {
  std::array<core::Vector2, 360> Points;
  DegreeTable() {
    for (std::size_t i = 0; i < Points.size(); ++i) {
      Points[i] = core::PolarToXY(1, static_cast<double>(i));
    }
  }
  [[nodiscard]] core::Vector2 At(int degrees) const {
    return Points[static_cast<std::size_t>(((degrees % 360) + 360) % 360)];
  }
};

const DegreeTable& Degrees() {
  static const DegreeTable table;
  return table;
}

void Include(Box& box, double x, double y) {
  box.MinX = std::min(box.MinX, static_cast<float>(x));
  box.MinY = std::min(box.MinY, static_cast<float>(y));
  box.MaxX = std::max(box.MaxX, static_cast<float>(x));
  box.MaxY = std::max(box.MaxY, static_cast<float>(y));
}

Box BoxOfEnds(const DrawRecord& record) {
  Box box{record.StartPoint.X, record.StartPoint.Y, record.StartPoint.X, record.StartPoint.Y};
  Include(box, record.EndPoint.X, record.EndPoint.Y);
  return box;
}

/// Takes in the circle's point at each whole degree from `first` to `last`. Between two multiples
/// of 90 both coordinates run one way only, so the ends of the range and those multiples are the
/// only points that can widen the box: the result is that of all degrees, to the bit.
void IncludeDegrees(Box& box, const DrawRecord& record, int first, int last) {
  if (first > last) std::swap(first, last);
  const double radius = record[Figure::Radius];
  const auto include = [&](int degrees) {
    const core::Vector2 unit = Degrees().At(degrees);
    Include(box, record.CentrePoint.X + radius * unit.X, record.CentrePoint.Y + radius * unit.Y);
  };
  include(first);
  include(last);
  const int quarter = first >= 0 ? (first + 89) / 90 * 90 : -(-first / 90 * 90);
  for (int degrees = quarter; degrees <= last && degrees < quarter + 360; degrees += 90) {
    include(degrees);
  }
}

void WidenAxis(float& low, float& high, double length) {
  double from = low - PickMargin;
  double to = high + PickMargin;
  for (const double least : {length / LengthShare, LeastWidth}) {
    const double missing = least - (to - from);
    if (missing > 0) {
      from -= missing / 2;
      to += missing / 2;
    }
  }
  low = static_cast<float>(from);
  high = static_cast<float>(to);
}

Box PickBox(const Box& inner, double length) {
  Box outer = inner;
  WidenAxis(outer.MinX, outer.MaxX, length);
  WidenAxis(outer.MinY, outer.MaxY, length);
  return outer;
}

Box Widened(const Box& box, double margin) {
  return {static_cast<float>(box.MinX - margin), static_cast<float>(box.MinY - margin),
          static_cast<float>(box.MaxX + margin), static_cast<float>(box.MaxY + margin)};
}

/// Points and boxes of a straight element; its length and angle are left to the callers.
void BindLine(DrawRecord& record) {
  const Point3& start = record.StartPoint;
  const Point3& end = record.EndPoint;
  record.ProfileStart = start;
  record.ProfileEnd = end;
  record.MidPoint = {Rounded((static_cast<double>(start.X) + end.X) / 2),
                     Rounded((static_cast<double>(start.Y) + end.Y) / 2),
                     Rounded((static_cast<double>(start.Z) + end.Z) / 2)};
  record.CentrePoint = record.MidPoint;
  record.BoxInner = BoxOfEnds(record);
}

void FinishLine(DrawRecord& record) {
  BindLine(record);
  const core::Polar polar =
      core::XYToPolar(static_cast<double>(record.EndPoint.X) - record.StartPoint.X,
                      static_cast<double>(record.EndPoint.Y) - record.StartPoint.Y);
  record[Figure::Length] = Rounded(polar.Length);
  record[Figure::Angle] = static_cast<float>(core::RoundPlaces(polar.Angle, 3));
  record.BoxOuter = PickBox(record.BoxInner, record[Figure::Length]);
}

Point3 PointAt(const DrawRecord& record, double angle) {
  const core::Vector2 offset = core::PolarToXY(record[Figure::Radius], angle);
  return {Rounded(record.CentrePoint.X + offset.X), Rounded(record.CentrePoint.Y + offset.Y),
          Rounded(record.CentrePoint.Z)};
}

void FinishArc(DrawRecord& record) {
  const double radius = record[Figure::Radius];
  const double start = record[Figure::StartAngle];
  const double sweep = record[Figure::Sweep];
  record.StartPoint = PointAt(record, start);
  record.MidPoint = PointAt(record, start + sweep / 2);
  record.EndPoint = PointAt(record, start + sweep);
  record.ProfileStart = record.StartPoint;
  record.ProfileEnd = record.EndPoint;
  const double length = sweep == 0 ? 0 : 2 * radius * core::Pi / (360 / std::abs(sweep));
  record[Figure::ArcLength] = static_cast<float>(length);
  record.BoxInner = BoxOfEnds(record);
  const double end = start + sweep;
  if (std::abs(start) <= LargestAngle && std::abs(end) <= LargestAngle) {
    IncludeDegrees(record.BoxInner, record, static_cast<int>(std::nearbyint(start)),
                   static_cast<int>(std::nearbyint(end)));
  }
  record.BoxOuter = PickBox(record.BoxInner, radius);
}

void FinishProfile(DrawRecord& record) {
  record.Code == RecordCode::ArcProfile ? FinishArc(record) : FinishLine(record);
}

void FinishMove(DrawRecord& record) {
  const bool keepsAngle = record.Code == RecordCode::Move && record.BeamOn() &&
                          record.Common().BeamState1.StationType >= FirstTurningType;
  if (keepsAngle) {
    BindLine(record);
    record.CentrePoint = record.EndPoint;
    record.BoxOuter = PickBox(record.BoxInner, record[Figure::Length]);
  } else {
    FinishLine(record);
    record[Figure::SecondLength] = record[Figure::Length];
  }
  record[Figure::ThirdLength] = record[Figure::Length];
}

void FinishPoint(DrawRecord& record) {
  const Point3 point = record.CentrePoint;
  record.StartPoint = record.MidPoint = record.EndPoint = point;
  record.ProfileStart = record.ProfileEnd = point;
  record.BoxInner = {point.X, point.Y, point.X, point.Y};
  record.BoxOuter = Widened(record.BoxInner, PickMargin);
}

void FinishSheet(DrawRecord& record) {
  record.StartPoint = {};
  record.EndPoint = {record[Figure::SheetX], record[Figure::SheetY], 0};
  record.CentrePoint = {static_cast<float>(record[Figure::SheetX] / 2.0),
                        static_cast<float>(record[Figure::SheetY] / 2.0), 0};
  record.MidPoint = record.CentrePoint;
  record.BoxInner = {0, 0, record[Figure::SheetX], record[Figure::SheetY]};
  record.BoxOuter = Widened(record.BoxInner, SheetMargin);
}

/// Records of patterns and tool hits belong to machines with a turret: they stay as they are.
void LeaveAlone(DrawRecord&) {}

struct Finisher {
  std::int16_t Code;
  void (*Finish)(DrawRecord&);
};

constexpr std::array<Finisher, 12> Finishers = {{
    {RecordCode::Move, FinishMove},
    {220, FinishMove},
    {RecordCode::LineProfile, FinishProfile},
    {RecordCode::ArcProfile, FinishProfile},
    {151, LeaveAlone},
    {230, LeaveAlone},
    {210, LeaveAlone},
    {225, LeaveAlone},
    {RecordCode::Dwell, FinishPoint},
    {RecordCode::ProgramStop, FinishPoint},
    {RecordCode::Reposition, FinishPoint},
    {RecordCode::PlotSheet, FinishSheet},
}};

bool HasNoPlacement(const BeamState& beam) { return beam.Kind == 'P' || beam.Kind == 'A'; }

/// False for nearly every beam: nothing to normalise and no placement to clear.
bool MayChange(const BeamState& beam) {
  return beam.Angle != 0 ||
         (HasNoPlacement(beam) && (beam.Placement[0] != 0 || beam.Placement[1] != 0));
}

void FinishBeam(BeamState& beam) {
  if (beam.Angle != 0) {
    beam.Angle = static_cast<float>(core::NormaliseAngle(beam.Angle));
  }
  if (HasNoPlacement(beam)) beam.Placement = {};
}

void FinishBeams(DrawRecord& record) {
  const CommonFields& common = record.Common();
  if (!MayChange(common.BeamState1) && !MayChange(common.BeamState2)) return;
  CommonFields& changed = record.ChangeCommon();
  FinishBeam(changed.BeamState1);
  FinishBeam(changed.BeamState2);
}

}  // namespace

void FinishRecord(DrawRecord& record) {
  FinishBeams(record);
  for (const Finisher& row : Finishers) {
    if (row.Code == record.Code) return row.Finish(record);
  }
}

}  // namespace torvane::partprogram
