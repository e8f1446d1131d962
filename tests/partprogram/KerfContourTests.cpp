// A compensated closed contour lies at the kerf width from the programmed path, on one side of it.
#include <algorithm>
#include <cmath>

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include "KerfRecords.h"
#include "partprogram/Tangent.h"

namespace torvane::partprogram {
namespace {

using namespace torvane::tests;
using core::Vector2;

bool IsArc(const DrawRecord& element) { return element.Code == RecordCode::ArcProfile; }

double EntryOf(const DrawRecord& e) {
  return IsArc(e) ? ArcTangent(e[Figure::StartAngle], e[Figure::Sweep]) : e[Figure::StartAngle];
}
double ExitOf(const DrawRecord& e) {
  return IsArc(e) ? ArcExit(e[Figure::StartAngle], e[Figure::Sweep]) : e[Figure::StartAngle];
}

/// -180 to 180 degrees.
double TurnBetween(const DrawRecord& a, const DrawRecord& b) {
  const double turn = core::NormaliseAngle(EntryOf(b) - ExitOf(a));
  return turn > 180 ? turn - 360 : turn;
}

/// An arc that turns by `sweep` on its way from one point to another.
DrawRecord ArcBetween(Vector2 from, Vector2 to, double sweep, std::int16_t side) {
  const core::Polar chord = core::XYToPolar(to.X - from.X, to.Y - from.Y);
  const double radius = chord.Length / 2 / std::sin(std::fabs(sweep) / 360 * core::Pi);
  // Seen from the start the centre lies at right angles to the tangent, on the side of the turn.
  const double tangent = chord.Angle - sweep / 2;
  const double toCentre = sweep > 0 ? tangent + 90 : tangent - 90;
  const Vector2 out = core::PolarToXY(radius, toCentre);
  return Arc({static_cast<float>(from.X + out.X), static_cast<float>(from.Y + out.Y), 0}, radius,
             core::NormaliseAngle(toCentre + 180), sweep, side);
}

/// A star-shaped contour of lines and arcs, counterclockwise, that begins and ends in the middle of
/// a line, so that its ends agree by themselves.
std::vector<DrawRecord> AnyContour(std::int16_t side) {
  const int corners = *rc::gen::inRange(4, 8);
  std::vector<Vector2> points;
  for (int i = 0; i < corners; ++i) {
    const double size = *rc::gen::inRange(60, 120);
    const Vector2 offset = core::PolarToXY(size, 360.0 * i / corners);
    points.push_back({std::round(500 + offset.X), std::round(400 + offset.Y)});
  }
  const auto at = [](Vector2 p) {
    return Point3{static_cast<float>(p.X), static_cast<float>(p.Y), 0};
  };
  const Vector2 middle{(points[0].X + points[1].X) / 2, (points[0].Y + points[1].Y) / 2};
  std::vector<DrawRecord> contour = {Line(at(middle), at(points[1]), side)};
  for (std::size_t i = 1; i < points.size(); ++i) {
    const Vector2 from = points[i];
    const Vector2 to = points[(i + 1) % points.size()];
    const int kind = *rc::gen::inRange(0, 3);
    const double sweep = *rc::gen::inRange(20, 90);
    if (kind == 0) contour.push_back(Line(at(from), at(to), side));
    if (kind != 0) contour.push_back(ArcBetween(from, to, kind == 1 ? sweep : -sweep, side));
  }
  contour.push_back(Line(at(points[0]), at(middle), side));
  for (std::size_t i = 1; i < contour.size(); ++i) {
    const double turn = std::fabs(TurnBetween(contour[i - 1], contour[i]));
    RC_PRE(turn < 1e-3 || (turn > 20 && turn < 140));
  }
  return contour;
}

Vector2 PointOf(const DrawRecord& e, double share) {
  if (!IsArc(e)) {
    return {e.StartPoint.X + share * (e.EndPoint.X - e.StartPoint.X),
            e.StartPoint.Y + share * (e.EndPoint.Y - e.StartPoint.Y)};
  }
  const Vector2 out =
      core::PolarToXY(e[Figure::Radius], e[Figure::StartAngle] + share * e[Figure::Sweep]);
  return {e.CentrePoint.X + out.X, e.CentrePoint.Y + out.Y};
}

double Distance(Vector2 a, Vector2 b) { return std::hypot(a.X - b.X, a.Y - b.Y); }

double DistanceTo(const DrawRecord& e, Vector2 p) {
  const double ends = std::min(Distance(p, PointOf(e, 0)), Distance(p, PointOf(e, 1)));
  if (!IsArc(e)) {
    const double dx = e.EndPoint.X - e.StartPoint.X;
    const double dy = e.EndPoint.Y - e.StartPoint.Y;
    const double share =
        ((p.X - e.StartPoint.X) * dx + (p.Y - e.StartPoint.Y) * dy) / (dx * dx + dy * dy);
    return share < 0 || share > 1 ? ends : std::min(ends, Distance(p, PointOf(e, share)));
  }
  const core::Polar polar = core::XYToPolar(p.X - e.CentrePoint.X, p.Y - e.CentrePoint.Y);
  const double along = e[Figure::Sweep] < 0
                           ? core::NormaliseAngle(e[Figure::StartAngle] - polar.Angle)
                           : core::NormaliseAngle(polar.Angle - e[Figure::StartAngle]);
  if (along > std::fabs(e[Figure::Sweep])) return ends;
  return std::min(ends, std::fabs(polar.Length - e[Figure::Radius]));
}

double DistanceToPath(const std::vector<DrawRecord>& path, Vector2 p) {
  double least = 1e9;
  for (const DrawRecord& element : path) least = std::min(least, DistanceTo(element, p));
  return least;
}

constexpr int Samples = 24;

double Area(const std::vector<DrawRecord>& path) {
  double area = 0;
  Vector2 last = PointOf(path.back(), 1);
  for (const DrawRecord& element : path) {
    for (int i = 0; i <= Samples; ++i) {
      const Vector2 point = PointOf(element, static_cast<double>(i) / Samples);
      area += last.X * point.Y - point.X * last.Y;
      last = point;
    }
  }
  return area / 2;
}

std::vector<DrawRecord> Compensated(const std::vector<DrawRecord>& contour, double width,
                                    const core::MachineData& machine) {
  auto draw = Numbered(contour);
  KerfResult result = MakeKerfFile(draw, width, machine);
  RC_ASSERT(!result.IllegalWidth);
  return {result.Records.begin() + 1, result.Records.end()};
}

/// Consecutive records meet, and the contour closes.
void CheckMeeting(const std::vector<DrawRecord>& path) {
  Vector2 last = PointOf(path.back(), 1);
  for (const DrawRecord& element : path) {
    RC_ASSERT(Distance(last, PointOf(element, 0)) < 2e-3);
    last = PointOf(element, 1);
  }
}

/// Side 1 lies to the left of the path where YDirection is 1, to the right where it is 0.
bool IsLeft(std::int16_t side, std::int16_t yDirection) { return (side == 1) == (yDirection == 1); }

struct ContourCase {
  std::int16_t Side = 1;
  std::int16_t YDirection = 1;
  double Width = 1;
};

ContourCase AnyCase() {
  return {static_cast<std::int16_t>(*rc::gen::inRange(1, 3)),
          static_cast<std::int16_t>(*rc::gen::inRange(0, 2)), *rc::gen::inRange(80, 200) / 100.0};
}

RC_GTEST_PROP(KerfContour, WithRoundedCornersLiesAtTheWidthEverywhere, ()) {
  const ContourCase c = AnyCase();
  const auto contour = AnyContour(c.Side);
  core::MachineData machine;
  machine.YDirection = c.YDirection;
  machine.CornerLimitFactor = 1;  // every outer corner gets its arc
  const auto path = Compensated(contour, c.Width, machine);
  CheckMeeting(path);
  for (const DrawRecord& element : path) {
    for (int i = 0; i <= Samples; ++i) {
      const Vector2 point = PointOf(element, static_cast<double>(i) / Samples);
      RC_ASSERT(std::fabs(DistanceToPath(contour, point) - c.Width) < 2e-3);
    }
  }
  const double grown = Area(path) - Area(contour);
  RC_ASSERT(IsLeft(c.Side, c.YDirection) == (grown < 0));
}

RC_GTEST_PROP(KerfContour, WithPointedCornersStaysBetweenTheWidthAndTheLimit, ()) {
  const ContourCase c = AnyCase();
  const auto contour = AnyContour(c.Side);
  core::MachineData machine;
  machine.YDirection = c.YDirection;
  machine.CornerLimitFactor = static_cast<float>(*rc::gen::inRange(12, 40)) / 10;
  const auto path = Compensated(contour, c.Width, machine);
  for (const DrawRecord& element : path) {
    for (int i = 0; i <= Samples; ++i) {
      const double distance =
          DistanceToPath(contour, PointOf(element, static_cast<double>(i) / Samples));
      RC_ASSERT(distance > c.Width - 2e-3);
      // An extended arc goes on along its circle, the point lies along its last chord.
      RC_ASSERT(distance < 1.1 * c.Width * machine.CornerLimitFactor);
    }
  }
}

}  // namespace
}  // namespace torvane::partprogram
