#include "partprogram/KerfJoin.h"

#include <cmath>

#include "partprogram/Binding.h"
#include "partprogram/Tangent.h"

namespace torvane::partprogram {

namespace {

constexpr double HalfCircleTolerance = 45.0;  ///< degrees

core::Polar PolarBetween(core::Vector2 from, core::Vector2 to) {
  return core::XYToPolar(to.X - from.X, to.Y - from.Y);
}

core::Vector2 Flat(Point3 point) { return {point.X, point.Y}; }

void Place(Point3& point, core::Vector2 place) {
  point.X = static_cast<float>(place.X);
  point.Y = static_cast<float>(place.Y);
}

Point3& EndOf(DrawRecord& record, ElementEnd end) {
  return end == ElementEnd::Start ? record.StartPoint : record.EndPoint;
}

/// Of nearly every record it is the name already.
void SetName(DrawRecord& record, std::string_view name) {
  const auto text = PadText<18>(name);
  if (record.Common().Name != text) record.ChangeCommon().Name = text;
}

}  // namespace

void TrimLine(DrawRecord& record, core::Vector2 point, ElementEnd end) {
  Place(EndOf(record, end), point);
  const core::Polar polar = PolarBetween(Flat(record.StartPoint), Flat(record.EndPoint));
  record[Figure::Length] = static_cast<float>(polar.Length);
  record[Figure::Angle] = static_cast<float>(polar.Angle);
  record.Code = RecordCode::LineProfile;
  SetName(record, "Line Profile");
  record.ProfileStart = record.StartPoint;
  record.ProfileEnd = record.EndPoint;
  record.KerfSide = 0;
  FinishRecord(record);
}

void TrimArc(DrawRecord& record, core::Vector2 point, ElementEnd end) {
  const double oldSweep = record[Figure::Sweep];
  double startAngle = record[Figure::StartAngle];
  double endAngle = core::NormaliseAngle(startAngle + oldSweep);
  const double angle = PolarBetween(Flat(record.CentrePoint), point).Angle;
  (end == ElementEnd::Start ? startAngle : endAngle) = angle;
  double sweep = endAngle - startAngle;
  if (oldSweep < 0 && sweep > 0) sweep -= 360.0;
  if (oldSweep >= 0 && sweep < 0) sweep += 360.0;
  Place(EndOf(record, end), point);
  record[Figure::StartAngle] = static_cast<float>(startAngle);
  record[Figure::Sweep] = static_cast<float>(sweep);
  FinishRecord(record);
}

void TrimElement(DrawRecord& record, core::Vector2 point, ElementEnd end) {
  record.Code == RecordCode::ArcProfile ? TrimArc(record, point, end)
                                        : TrimLine(record, point, end);
}

double HalfCircleSweep(double startAngle, double sweep, const DrawRecord& previous) {
  const double tangent = ArcTangent(startAngle, sweep);
  const double exit = previous.Code == RecordCode::ArcProfile
                          ? ArcExit(previous[Figure::StartAngle], previous[Figure::Sweep])
                          : core::NormaliseAngle(previous[Figure::Angle]);
  return WithinAngle(tangent, exit, HalfCircleTolerance) ? sweep : 360.0 - sweep;
}

DrawRecord MakeCornerArc(const DrawRecord& previous, const DrawRecord& current, Point3 corner,
                         double kerfWidth, double feedPercent) {
  DrawRecord arc;
  arc.BlockNumber = previous.BlockNumber;
  arc.SubNumber = previous.SubNumber;
  arc.SubBlock = previous.SubBlock;
  arc.RecordIndex = previous.RecordIndex;
  arc.SkipLevel = previous.SkipLevel;
  arc.OwnNumber = previous.OwnNumber;
  const CommonFields& before = previous.Common();
  CommonFields& common = arc.ChangeCommon();
  common.BeamState1 = before.BeamState1;
  common.ProfileNumber = before.ProfileNumber;
  common.BeamState2 = before.BeamState2;
  common.Settings = before.Settings;
  arc.StartPoint = previous.EndPoint;
  arc.EndPoint = current.StartPoint;
  arc.CentrePoint = corner;
  const double startAngle = PolarBetween(Flat(corner), Flat(arc.StartPoint)).Angle;
  const double endAngle = PolarBetween(Flat(corner), Flat(arc.EndPoint)).Angle;
  double sweep = core::RoundPlaces(endAngle - startAngle, 4);
  const double start = core::RoundPlaces(startAngle, 4);
  if (std::fabs(sweep) == 180.0) sweep = HalfCircleSweep(start, sweep, previous);
  if (std::fabs(sweep) > 180.0) sweep += sweep < 0 ? 360.0 : -360.0;
  arc[Figure::Radius] = static_cast<float>(std::fabs(kerfWidth));
  arc[Figure::StartAngle] = static_cast<float>(start);
  arc[Figure::Sweep] = static_cast<float>(sweep);
  arc.Code = RecordCode::ArcProfile;
  common.Name = PadText<18>("Arc Profile");
  arc[Mark::CornerArc] = -1;
  arc.KerfSide = 0;
  arc.Feed = static_cast<float>(previous.Feed / 100.0 * (feedPercent > 0 ? feedPercent : 100.0));
  FinishRecord(arc);
  return arc;
}

}  // namespace torvane::partprogram
