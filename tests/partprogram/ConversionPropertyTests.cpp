// What must hold for every program.
#include <cmath>
#include <string>
#include <vector>

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include "core/General.h"
#include "partprogram/Conversion.h"

using namespace torvane;
using namespace torvane::partprogram;
using namespace torvane::tests;

namespace {

/// One element of a path, in plain absolute coordinates.
struct Step {
  enum { Rapid, Line, Full, Quarter, Radius, Dwell } Kind;
  double X = 0;  ///< end, or the centre offset of an arc
  double Y = 0;
};

std::string Number(double value) { return core::NumberText(core::RoundPlaces(value, 3), -1); }

/// Writes the steps as blocks; `sign` mirrors nothing, `incremental` writes G91.
std::vector<std::string> Blocks(const std::vector<Step>& steps, bool incremental = false) {
  std::vector<std::string> lines = {incremental ? "G91" : "G90"};
  double x = 0;
  double y = 0;
  const auto end = [&](double toX, double toY) {
    const std::string text = incremental ? " X" + Number(toX - x) + " Y" + Number(toY - y)
                                         : " X" + Number(toX) + " Y" + Number(toY);
    x = toX;
    y = toY;
    return text;
  };
  for (const Step& step : steps) {
    const std::string centre = " I" + Number(step.X) + " J" + Number(step.Y);
    switch (step.Kind) {
      case Step::Rapid:
        lines.push_back("G00" + end(step.X, step.Y));
        break;
      case Step::Line:
        lines.push_back("G01" + end(step.X, step.Y));
        break;
      case Step::Full:
        lines.push_back("G02" + end(x, y) + centre);
        break;
      case Step::Quarter:  // a quarter about (x + X, y + Y)
        lines.push_back("G03" + end(x + step.X - step.Y, y + step.Y + step.X) + centre);
        break;
      case Step::Radius:  // a half circle at most
        lines.push_back("G02" + end(x + step.X, y + step.Y) + " R" +
                        Number(std::hypot(step.X, step.Y)));
        break;
      case Step::Dwell:
        lines.push_back("G04 K0.5");
        break;
    }
  }
  return lines;
}

rc::Gen<std::vector<Step>> Paths() {
  return rc::gen::map(
      rc::gen::container<std::vector<std::tuple<int, int, int>>>(
          rc::gen::tuple(rc::gen::inRange(0, 6), rc::gen::inRange(-50000, 50000),
                         rc::gen::inRange(-50000, 50000))),
      [](const std::vector<std::tuple<int, int, int>>& raw) {
        std::vector<Step> steps;
        for (const auto& [kind, x, y] : raw) {
          const double spread = x == 0 && y == 0 ? 1 : 0;  // no arc without a radius
          steps.push_back({static_cast<decltype(Step::Kind)>(kind), x / 100.0 + spread, y / 100.0});
        }
        return steps;
      });
}

bool IsArc(const DrawRecord& record) { return record.Code == RecordCode::ArcProfile; }

double Distance(const Point3& a, const Point3& b) {
  return std::hypot(static_cast<double>(a.X) - b.X, static_cast<double>(a.Y) - b.Y);
}

/// Room for singles and for ends that lie a little off their circle.
constexpr double Near = 0.06;

RC_GTEST_PROP(Conversion, ConsecutiveRecordsMeet, ()) {
  const auto result = Convert(Blocks(*Paths()));
  RC_ASSERT(result.CriticalErrors == 0);
  Point3 last;
  for (std::size_t i = 1; i < result.Records.size(); ++i) {
    RC_ASSERT(Distance(result.Records[i].StartPoint, last) < Near);
    last = result.Records[i].EndPoint;
  }
}

RC_GTEST_PROP(Conversion, EveryStepIsARecordWithItsNumberAndItsBlock, ()) {
  const auto steps = *Paths();
  const auto result = Convert(Blocks(steps));
  RC_ASSERT(result.Records.size() == steps.size() + 1);
  RC_ASSERT(static_cast<std::size_t>(result.Records[0][Mark::RecordCount]) == steps.size() + 1);
  for (std::size_t i = 0; i < steps.size(); ++i) {
    const DrawRecord& record = result.Records[i + 1];
    RC_ASSERT(static_cast<std::size_t>(record.RecordIndex) == i + 2);
    RC_ASSERT(static_cast<std::size_t>(record.BlockNumber) == i + 2);  // behind the G90 line
  }
}

RC_GTEST_PROP(Conversion, AnArcKeepsItsRadiusAtBothEndsAndInTheMiddle, ()) {
  for (const DrawRecord& record : Convert(Blocks(*Paths())).Records) {
    if (!IsArc(record)) continue;
    const double radius = record[Figure::Radius];
    for (const Point3& point : {record.StartPoint, record.MidPoint, record.EndPoint}) {
      RC_ASSERT(std::abs(Distance(point, record.CentrePoint) - radius) < 1e-3);
    }
    RC_ASSERT(record[Figure::Sweep] != 0);
    RC_ASSERT(std::abs(record[Figure::Sweep]) <= 360);
    const double length = std::abs(record[Figure::Sweep]) / 360 * 2 * core::Pi * radius;
    RC_ASSERT(std::abs(record[Figure::ArcLength] - length) < 1e-3 + length * 1e-6);
  }
}

RC_GTEST_PROP(Conversion, TotalsAreTheSumsOverTheRecords, ()) {
  const auto result = Convert(Blocks(*Paths()));
  double moves = 0;
  double profiles = 0;
  Point3 last;
  for (std::size_t i = 1; i < result.Records.size(); ++i) {
    const DrawRecord& record = result.Records[i];
    moves += Distance(last, record.StartPoint);
    last = record.EndPoint;
    if (record.Code == RecordCode::Move) moves += record[Figure::Length];
    if (IsArc(record)) profiles += std::copysign(record[Figure::ArcLength], record[Figure::Sweep]);
  }
  RC_ASSERT(std::abs(result.Totals.MoveLength - moves) < 1e-3 + moves * 1e-6);
  RC_ASSERT(std::abs(result.Totals.ProfileLength - profiles) < 1 + std::abs(profiles) * 1e-6);
}

RC_GTEST_PROP(Conversion, BoxesHoldTheirElements, ()) {
  for (const DrawRecord& record : Convert(Blocks(*Paths())).Records) {
    if (record.Code == RecordCode::Sheet) continue;
    for (const Point3& point : {record.StartPoint, record.MidPoint, record.EndPoint}) {
      RC_ASSERT(core::PointInBox(record.BoxOuter.MinX, record.BoxOuter.MinY, record.BoxOuter.MaxX,
                                 record.BoxOuter.MaxY, point.X, point.Y));
    }
  }
}

/// Compares two walks record by record, the second one's points put through `map`.
template <typename Map>
void AssertSamePath(const std::vector<DrawRecord>& left, const std::vector<DrawRecord>& right,
                    double sweepSign, Map map) {
  RC_ASSERT(left.size() == right.size());
  for (std::size_t i = 1; i < left.size(); ++i) {
    RC_ASSERT(left[i].Code == right[i].Code);
    RC_ASSERT(Distance(left[i].StartPoint, map(right[i].StartPoint)) < Near);
    RC_ASSERT(Distance(left[i].EndPoint, map(right[i].EndPoint)) < Near);
    RC_ASSERT(Distance(left[i].CentrePoint, map(right[i].CentrePoint)) < Near);
    if (IsArc(left[i])) {
      RC_ASSERT(std::abs(left[i][Figure::Sweep] - sweepSign * right[i][Figure::Sweep]) < 0.1);
    }
  }
}

/// Half circles by radius stand on the edge of two centres; a turn may choose the other one.
std::vector<Step> WithoutRadius(std::vector<Step> steps) {
  for (Step& step : steps) {
    if (step.Kind == Step::Radius) step.Kind = Step::Line;
    const double size = std::hypot(step.X, step.Y);
    if (size < 1) step.X += 2;
  }
  return steps;
}

RC_GTEST_PROP(Conversion, AMirroredProgramIsTheMirrorImage, ()) {
  const auto steps = WithoutRadius(*Paths());
  for (const auto& [word, signX, signY] :
       {std::tuple{"M11", -1.0F, 1.0F}, {"M12", 1.0F, -1.0F}, {"M13", -1.0F, -1.0F}}) {
    auto mirrored = Blocks(steps);
    mirrored.front() += word;
    AssertSamePath(Convert(mirrored).Records, Convert(Blocks(steps)).Records, signX * signY,
                   [sx = signX, sy = signY](Point3 point) {
                     return Point3{point.X * sx, point.Y * sy, point.Z};
                   });
  }
}

RC_GTEST_PROP(Conversion, ATurnedSubroutineIsTheTurnedPath, ()) {
  const auto steps = WithoutRadius(*Paths());
  const int angle = *rc::gen::inRange(1, 359);
  std::vector<std::string> turned = {"G98 S1 A" + std::to_string(angle) + " X30 Y-20", "M30", "S1"};
  for (const auto& line : Blocks(steps)) turned.push_back(line);
  turned.push_back("M02");
  auto plain = Convert(Blocks(steps)).Records;
  auto records = Convert(turned).Records;
  // The first move begins where the call was made, not at the turned origin.
  if (records.size() > 1 && records[1].Code == RecordCode::Move) {
    records.erase(records.begin() + 1);
    plain.erase(plain.begin() + 1);
  }
  AssertSamePath(records, plain, 1, [&](Point3 point) {
    const auto turnedPoint = core::RotateAbout({0, 0}, angle, {point.X, point.Y});
    return Point3{static_cast<float>(turnedPoint.X + 30), static_cast<float>(turnedPoint.Y - 20),
                  point.Z};
  });
}

RC_GTEST_PROP(Conversion, AnIncrementalProgramIsTheAbsoluteOne, ()) {
  auto steps = WithoutRadius(*Paths());
  if (steps.size() > 20) steps.resize(20);  // each block adds its own rounding
  AssertSamePath(Convert(Blocks(steps, true)).Records, Convert(Blocks(steps)).Records, 1,
                 [](Point3 point) { return point; });
}

RC_GTEST_PROP(Conversion, AProgramInInchesIsTheScaledOne, ()) {
  const auto steps = WithoutRadius(*Paths());
  auto scaled = Blocks(steps);
  scaled.insert(scaled.begin(), "G70");
  auto plain = Convert(Blocks(steps)).Records;
  const auto records = Convert(scaled).Records;
  RC_ASSERT(records.size() == plain.size());
  for (std::size_t i = 1; i < records.size(); ++i) {
    const double size = std::hypot(plain[i].EndPoint.X, plain[i].EndPoint.Y) * 25.4;
    RC_ASSERT(std::abs(records[i].EndPoint.X - plain[i].EndPoint.X * 25.4) < 0.01 + size * 1e-6);
    RC_ASSERT(std::abs(records[i].EndPoint.Y - plain[i].EndPoint.Y * 25.4) < 0.01 + size * 1e-6);
  }
}

/// The limit check of an arc told degree by degree.
bool LeavesTravel(const DrawRecord& arc, const core::MachineData& machine) {
  const double sweep = arc[Figure::Sweep];
  const int steps = static_cast<int>(std::nearbyint(std::abs(sweep)));
  for (int i = 0; i <= steps; ++i) {
    const auto offset =
        core::PolarToXY(arc[Figure::Radius], arc[Figure::StartAngle] + (sweep < 0 ? -i : i));
    const double x = arc.CentrePoint.X + offset.X;
    const double y = arc.CentrePoint.Y + offset.Y;
    if (x < machine.TravelMinX || x > machine.TravelMaxX || y < machine.TravelMinY ||
        y > machine.TravelMaxY) {
      return true;
    }
  }
  return false;
}

RC_GTEST_PROP(Conversion, AnArcIsReportedExactlyWhenItsDegreesLeaveTheTravel, ()) {
  Conversion conversion;
  conversion.Machine.TravelMinX = -100;
  conversion.Machine.TravelMaxX = 100;
  conversion.Machine.TravelMinY = -100;
  conversion.Machine.TravelMaxY = 100;
  const int x = *rc::gen::inRange(-90, 90);
  const int y = *rc::gen::inRange(-90, 90);
  const int i = *rc::gen::inRange(-60, 60);
  const int j = *rc::gen::inRange(-60, 60);
  const std::string start = "G00 X" + std::to_string(x) + " Y" + std::to_string(y);
  const std::string arc = "G02 I" + std::to_string(i) + " J" + std::to_string(j);
  const auto result = conversion.Run(std::vector<std::string>{start, arc});
  RC_ASSERT(result.Errors.empty() != LeavesTravel(result.Records.back(), conversion.Machine));
}

}  // namespace
