// Offsets, joins and the numbers of records.
#include <cmath>
#include <limits>
#include <tuple>

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include "KerfRecords.h"
#include "partprogram/KerfJoin.h"
#include "partprogram/OffsetElements.h"

namespace torvane::partprogram {
namespace {

using namespace torvane::tests;

core::MachineData Machine(std::int16_t yDirection = 1) {
  core::MachineData machine;
  machine.YDirection = yDirection;
  return machine;
}

std::vector<DrawRecord> Kerf(std::vector<DrawRecord> draw, double width,
                             const core::MachineData& machine = Machine()) {
  return MakeKerfFile(draw, width, machine).Records;
}

std::vector<std::int16_t> Codes(const std::vector<DrawRecord>& records) {
  std::vector<std::int16_t> codes;
  for (const DrawRecord& record : records) codes.push_back(record.Code);
  return codes;
}

// ---- offsets ----

TEST(OffsetLine, MovesByTheWholeWidthToTheSideOfTheTable) {
  const std::vector<std::tuple<int, int, float>> rows = {{1, 1, 2.F}, {1, 0, -2.F}, {2, 1, -2.F},
                                                         {2, 0, 2.F}, {1, 2, 2.F},  {2, -1, -2.F}};
  for (const auto& [side, yDirection, y] : rows) {
    DrawRecord line = Line({0, 0, 0}, {10, 0, 0}, static_cast<std::int16_t>(side));
    OffsetLine(line, 2, static_cast<std::int16_t>(yDirection));
    EXPECT_NEAR(line.StartPoint.Y, y, 1e-6) << side << " " << yDirection;
    EXPECT_NEAR(line.EndPoint.Y, y, 1e-6);
    EXPECT_NEAR(line.StartPoint.X, 0, 1e-6);
    EXPECT_EQ(line[Figure::Length], 10);
    EXPECT_EQ(line[Figure::Angle], 0);
    EXPECT_EQ(line.Code, RecordCode::LineProfile);
    EXPECT_EQ(line.KerfSide, 0);
    EXPECT_NEAR(line.MidPoint.Y, y, 1e-4);
  }
}

TEST(OffsetLine, LeavesALineWithoutASide) {
  DrawRecord line = Line({0, 0, 0}, {10, 0, 0});
  const std::string before = Bytes(line);
  OffsetLine(line, 2, 1);
  EXPECT_EQ(Bytes(line), before);
}

TEST(KerfArcSign, HoldsToTheTable) {
  const std::vector<std::tuple<int, double, int, int>> rows = {
      {1, -90, 1, +1}, {1, -90, 0, -1}, {1, 90, 1, -1}, {1, 90, 0, +1},
      {1, 0, 1, -1},   {2, 90, 1, +1},  {2, 90, 0, -1}, {2, 0, 1, +1},
      {2, -90, 1, -1}, {2, -90, 0, +1}, {0, 90, 1, 0},  {0, -90, 0, 0}};
  for (const auto& [side, sweep, yDirection, sign] : rows) {
    EXPECT_EQ(
        KerfArcSign(static_cast<std::int16_t>(side), sweep, static_cast<std::int16_t>(yDirection)),
        sign)
        << side << " " << sweep << " " << yDirection;
  }
}

TEST(KerfArcSign, TakesOnlyYDirection1ForUpWhereALineTakesAnyButZero) {
  EXPECT_EQ(KerfArcSign(1, 90, 2), KerfArcSign(1, 90, 0));
  DrawRecord two = Line({0, 0, 0}, {10, 0, 0}, 1);
  DrawRecord one = two;
  OffsetLine(two, 2, 2);
  OffsetLine(one, 2, 1);
  EXPECT_EQ(Bytes(two), Bytes(one));
}

TEST(OffsetArc, ChangesTheRadiusAndKeepsCentreStartAndSweep) {
  DrawRecord arc = Arc({3, 4, 0}, 5, 30, 90, 1);
  EXPECT_TRUE(OffsetArc(arc, 2, 1));
  EXPECT_EQ(arc[Figure::Radius], 3);
  EXPECT_EQ(arc[Figure::StartAngle], 30);
  EXPECT_EQ(arc[Figure::Sweep], 90);
  EXPECT_EQ(arc.CentrePoint.X, 3);
  EXPECT_EQ(arc.KerfSide, 0);
  EXPECT_NEAR(std::hypot(arc.StartPoint.X - 3, arc.StartPoint.Y - 4), 3, 1e-4);
  DrawRecord outer = Arc({3, 4, 0}, 5, 30, 90, 2);
  EXPECT_TRUE(OffsetArc(outer, 2, 1));
  EXPECT_EQ(outer[Figure::Radius], 7);
}

TEST(OffsetArc, ThatShrinksToNothingIsIllegalAndKeepsItsRadius) {
  for (const double width : {5.0, 6.0}) {
    DrawRecord arc = Arc({0, 0, 0}, 5, 0, 90, 1);
    EXPECT_FALSE(OffsetArc(arc, width, 1));
    EXPECT_EQ(arc[Figure::Radius], 5);
    EXPECT_EQ(arc.KerfSide, 0);
  }
}

TEST(KerfModule, AnIllegalWidthIsToldAndEverythingIsWritten) {
  auto draw = Numbered({Arc({0, 0, 0}, 5, 0, 90, 1), Move({0, 5, 0}, {9, 9, 0})});
  const KerfResult result = MakeKerfFile(draw, 5, Machine());
  EXPECT_TRUE(result.IllegalWidth);
  EXPECT_EQ(result.Records.size(), 3U);
  auto plain = Numbered({Line({0, 0, 0}, {1, 0, 0}, 1)});
  EXPECT_FALSE(MakeKerfFile(plain, 5, Machine()).IllegalWidth);
  EXPECT_TRUE(MakeKerfFile(plain, std::numeric_limits<double>::infinity(), Machine()).IllegalWidth);
}

// ---- joins ----

/// A square corner at (10, 0), from along X to up; side 1 with YDirection 1 is the inside of it.
std::vector<DrawRecord> Corner(std::int16_t side) {
  return Numbered({Line({0, 0, 0}, {10, 0, 0}, side), Line({10, 0, 0}, {10, 10, 0}, side)});
}

TEST(KerfJoin, AnInnerCornerIsTrimmedToTheCrossing) {
  const auto kerf = Kerf(Corner(1), 1);
  ASSERT_EQ(kerf.size(), 3U);
  EXPECT_NEAR(kerf[1].EndPoint.X, 9, 1e-4);
  EXPECT_NEAR(kerf[1].EndPoint.Y, 1, 1e-4);
  EXPECT_NEAR(kerf[2].StartPoint.X, 9, 1e-4);
  EXPECT_NEAR(kerf[2].StartPoint.Y, 1, 1e-4);
  EXPECT_NEAR(kerf[1][Figure::Length], 9, 1e-4);
  EXPECT_EQ(kerf[1].ProfileEnd.X, kerf[1].EndPoint.X);
  EXPECT_EQ(TextOf(kerf[1].Common().Name), "Line Profile");
}

TEST(KerfJoin, AnOuterCornerWithinTheLimitIsExtendedToThePoint) {
  const auto kerf = Kerf(Corner(2), 1);  // the point is 1.41 widths away, the limit is 10
  ASSERT_EQ(kerf.size(), 3U);
  EXPECT_NEAR(kerf[1].EndPoint.X, 11, 1e-4);
  EXPECT_NEAR(kerf[1].EndPoint.Y, -1, 1e-4);
  EXPECT_NEAR(kerf[2][Figure::Length], 11, 1e-4);
}

TEST(KerfJoin, AnOuterCornerBeyondTheLimitGetsAnArc) {
  auto draw = Corner(2);
  draw[1].BlockNumber = 7;
  draw[1].SubNumber = 3;
  draw[1].SubBlock = 5;
  draw[1].SkipLevel = 2;
  draw[1].ChangeCommon().BeamState1.Kind = 'P';
  draw[1].ChangeCommon().BeamState2.On = -1;
  draw[1].ChangeCommon().Settings[4] = 12;
  core::MachineData machine = Machine();
  machine.CornerLimitFactor = 1.4F;
  machine.CornerFeedPercent = 40;
  const auto kerf = Kerf(draw, 1, machine);
  ASSERT_EQ(kerf.size(), 4U);
  const DrawRecord& arc = kerf[2];
  EXPECT_EQ(arc.Code, RecordCode::ArcProfile);
  EXPECT_EQ(TextOf(arc.Common().Name), "Arc Profile");
  EXPECT_EQ(arc[Mark::CornerArc], -1);
  EXPECT_EQ(arc[Figure::Radius], 1);
  EXPECT_EQ(arc[Figure::StartAngle], 270);
  EXPECT_EQ(arc[Figure::Sweep], 90);
  EXPECT_EQ(arc.CentrePoint.X, 10);
  EXPECT_NEAR(arc.StartPoint.Y, -1, 1e-4);
  EXPECT_NEAR(arc.EndPoint.X, 11, 1e-4);
  EXPECT_EQ(arc.Feed, 800);
  EXPECT_EQ(arc.BlockNumber, 7);
  EXPECT_EQ(arc.SubNumber, 3);
  EXPECT_EQ(arc.SubBlock, 5);
  EXPECT_EQ(arc.SkipLevel, 2);
  EXPECT_EQ(arc.Common().BeamState1.Kind, 'P');
  EXPECT_EQ(arc.Common().BeamState2.On, -1);
  EXPECT_EQ(arc.Common().Settings[4], 12);
  EXPECT_EQ(arc.KerfSide, 0);
  EXPECT_EQ(arc.RecordIndex, 2);  // of the element before it
  EXPECT_EQ(kerf[3].RecordIndex, 3);
  EXPECT_EQ(kerf.front()[Mark::RecordCount], 4);
  EXPECT_NEAR(kerf[1].EndPoint.X, 10, 1e-4);  // untrimmed
}

TEST(KerfJoin, AFeedPercentThatIsNotPositiveCountsAs100) {
  for (const double percent : {0.0, -5.0}) {
    EXPECT_EQ(MakeCornerArc(Line({0, -1, 0}, {10, -1, 0}), Line({11, 0, 0}, {11, 9, 0}), {10, 0, 0},
                            1, percent)
                  .Feed,
              2000);
  }
}

TEST(KerfJoin, ALineThatTurnsBackIsParallelAndGetsAHalfCircle) {
  const auto kerf =
      Kerf(Numbered({Line({0, 0, 0}, {10, 0, 0}, 2), Line({10, 0, 0}, {0, 0, 0}, 2)}), 1);
  ASSERT_EQ(kerf.size(), 4U);
  EXPECT_EQ(kerf[2][Figure::Sweep], 180);
  EXPECT_NEAR(kerf[2].MidPoint.X, 11, 1e-4);
}

TEST(HalfCircle, ASweepThatLeavesAlongTheElementStays) {
  const DrawRecord before = Line({0, 0, 0}, {10, 0, 0});
  EXPECT_EQ(HalfCircleSweep(270, 180, before), 180);  // leaves at 0 degrees
  EXPECT_EQ(HalfCircleSweep(90, -180, before), -180);
  EXPECT_EQ(HalfCircleSweep(225, 180, before), 180);  // -45: the edge is inside
  EXPECT_EQ(HalfCircleSweep(315, 180, before), 180);  // +45
  const DrawRecord arc = Arc({0, 0, 0}, 5, 0, 90);    // ends at 180 degrees
  EXPECT_EQ(HalfCircleSweep(90, 180, arc), 180);
  const DrawRecord negative = Arc({0, 0, 0}, 5, 0, -90);
  EXPECT_EQ(HalfCircleSweep(90, 180, negative), 180);
}

TEST(HalfCircle, TheOtherWayRoundLeavesAPositiveSweepAsItIs) {
  const DrawRecord before = Line({0, 0, 0}, {10, 0, 0});
  EXPECT_EQ(HalfCircleSweep(90, 180, before), 180);    // 360 less 180
  EXPECT_EQ(HalfCircleSweep(270, -180, before), 540);  // 360 less -180; the short way is 180
  const DrawRecord arc =
      MakeCornerArc(Line({0, -1, 0}, {10, -1, 0}), Line({10, 1, 0}, {0, 1, 0}), {10, 0, 0}, 1, 100);
  EXPECT_EQ(std::fabs(arc[Figure::Sweep]), 180);
}

TEST(CornerArc, GoesTheShortWayRound) {
  // From 350 degrees to 10 degrees: -340 gains 360.
  const DrawRecord before = Line({0, 0, 0}, {0.984807753F, -0.173648178F, 0});
  const DrawRecord behind = Line({0.984807753F, 0.173648178F, 0}, {5, 5, 0});
  const DrawRecord arc = MakeCornerArc(before, behind, {0, 0, 0}, 1, 100);
  EXPECT_NEAR(arc[Figure::Sweep], 20, 1e-3);
  const DrawRecord back = MakeCornerArc(Line({5, 5, 0}, behind.StartPoint),
                                        Line(before.EndPoint, {0, 0, 0}), {0, 0, 0}, 1, 100);
  EXPECT_NEAR(back[Figure::Sweep], -20, 1e-3);
}

TEST(CornerArc, TakesTheSizeOfANegativeWidthForItsRadius) {
  const DrawRecord arc = MakeCornerArc(Line({0, -1, 0}, {10, -1, 0}), Line({11, 0, 0}, {11, 9, 0}),
                                       {10, 0, 0}, -1, 100);
  EXPECT_EQ(arc[Figure::Radius], 1);
  EXPECT_NEAR(arc.StartPoint.Y, -1, 1e-4);
}

TEST(TrimArc, KeepsTheOtherEndAndTheSense) {
  DrawRecord arc = Arc({0, 0, 0}, 10, 350, 100);
  TrimArc(arc, {10, 0}, ElementEnd::Start);
  EXPECT_NEAR(arc[Figure::StartAngle], 0, 1e-4);
  EXPECT_NEAR(arc[Figure::Sweep], 90, 1e-4);
  EXPECT_NEAR(arc.EndPoint.Y, 10, 1e-3);
  EXPECT_NEAR(arc[Figure::ArcLength], 10 * core::Pi / 2, 1e-3);  // finished: the length follows
  DrawRecord negative = Arc({0, 0, 0}, 10, 10, -100);
  TrimArc(negative, {0, -10.5}, ElementEnd::End);  // the radius stays
  EXPECT_NEAR(negative[Figure::Sweep], -100, 1e-3);
  EXPECT_EQ(negative[Figure::Radius], 10);
  TrimArc(negative, {-10, 0}, ElementEnd::End);
  EXPECT_NEAR(negative[Figure::Sweep], -190, 1e-3);
}

TEST(TrimArc, ASweepOfTheWrongSignGoesRoundByAWholeTurn) {
  DrawRecord arc = Arc({0, 0, 0}, 10, 0, 90);
  TrimArc(arc, {0, 10.0}, ElementEnd::Start);
  EXPECT_NEAR(arc[Figure::Sweep], 0, 1e-4);
  arc = Arc({0, 0, 0}, 10, 0, 90);
  TrimArc(arc, {-10, 0}, ElementEnd::Start);  // behind the end: 90 less 180, and a turn
  EXPECT_NEAR(arc[Figure::Sweep], 270, 1e-3);
}

TEST(KerfModule, CollinearLinesAgreeAndNeedNoJoin) {
  const auto kerf =
      Kerf(Numbered({Line({0, 0, 0}, {10, 0, 0}, 1), Line({10, 0, 0}, {25, 0, 0}, 1)}), 1);
  ASSERT_EQ(kerf.size(), 3U);
  EXPECT_EQ(kerf[1].EndPoint.X, kerf[2].StartPoint.X);
  EXPECT_EQ(kerf[1][Figure::Length], 10);
}

TEST(KerfModule, AMoveBetweenStopsJoining) {
  for (const std::int16_t code : {RecordCode::Move, RecordCode::FlipRotate,
                                  RecordCode::LoadPosition, RecordCode::OpenClamps}) {
    const auto kerf = Kerf(Numbered({Line({0, 0, 0}, {10, 0, 0}, 1), Other(code, {10, 0, 0}),
                                     Line({10, 0, 0}, {10, 10, 0}, 1)}),
                           1);
    EXPECT_NEAR(kerf[1].EndPoint.X, 10, 1e-4) << code;
    EXPECT_NEAR(kerf[3].StartPoint.Y, 0, 1e-4) << code;
  }
}

TEST(KerfModule, ADwellAndItsLikeBetweenDoNotStopJoining) {
  for (const std::int16_t code : {RecordCode::Dwell, RecordCode::Settings, RecordCode::ProgramStop,
                                  RecordCode::Reposition, RecordCode::CancelOffsets}) {
    const auto kerf = Kerf(Numbered({Line({0, 0, 0}, {10, 0, 0}, 1), Other(code, {10, 0, 0}),
                                     Line({10, 0, 0}, {10, 10, 0}, 1)}),
                           1);
    EXPECT_NEAR(kerf[1].EndPoint.X, 9, 1e-4) << code;
    EXPECT_NEAR(kerf[3].StartPoint.Y, 1, 1e-4) << code;
  }
}

TEST(KerfModule, ACornerArcStandsBehindADwellBetweenItsElements) {
  core::MachineData machine = Machine();
  machine.CornerLimitFactor = 1;
  auto draw = Numbered({Line({0, 0, 0}, {10, 0, 0}, 2), Other(RecordCode::Dwell, {10, 0, 0}),
                        Line({10, 0, 0}, {10, 10, 0}, 2)});
  const auto kerf = MakeKerfFile(draw, 1, machine).Records;
  EXPECT_EQ(Codes(kerf), (std::vector<std::int16_t>{100, 120, 311, 130, 120}));
  EXPECT_EQ(kerf[3].RecordIndex, 2);
  EXPECT_EQ(draw[3].RecordIndex, 5);
}

TEST(KerfModule, ElementsThatDoNotMeetAreNotJoined) {
  for (const float gap : {0.1001F, 3.0F}) {
    const auto kerf = Kerf(
        Numbered({Line({0, 0, 0}, {10, 0, 0}, 1), Line({10 + gap, 0, 0}, {10 + gap, 10, 0}, 1)}),
        1);
    EXPECT_NEAR(kerf[1].EndPoint.X, 10, 1e-4);
  }
  const auto near =
      Kerf(Numbered({Line({0, 0, 0}, {10, 0, 0}, 1), Line({10.09F, 0, 0}, {10.09F, 10, 0}, 1)}), 1);
  EXPECT_NEAR(near[1].EndPoint.X, 9.09, 1e-4);
}

TEST(KerfModule, AnElementWithoutASideJoinsItsOffsetNeighbour) {
  const auto kerf =
      Kerf(Numbered({Line({0, 0, 0}, {10, 0, 0}, 1), Line({10, 0, 0}, {10, 10, 0}, 0)}), 1);
  EXPECT_NEAR(kerf[1].EndPoint.X, 10, 1e-4);
  EXPECT_NEAR(kerf[2].StartPoint.Y, 1, 1e-4);  // trimmed to where the offset line meets it
  EXPECT_NEAR(kerf[2].StartPoint.X, 10, 1e-4);
}

TEST(KerfModule, ALeadInOfALineMeetsAnOffsetHole) {
  const auto kerf =
      Kerf(Numbered({Line({0, 0, 0}, {10, 0, 0}, 1), Arc({0, 0, 0}, 10, 0, 180, 1)}), 1);
  ASSERT_EQ(kerf.size(), 3U);
  EXPECT_EQ(kerf[2][Figure::Length], 9);
  EXPECT_NEAR(std::hypot(kerf[1].EndPoint.X, kerf[1].EndPoint.Y), 9, 1e-3);
  EXPECT_NEAR(kerf[1].EndPoint.X, kerf[2].StartPoint.X, 1e-3);
  EXPECT_NEAR(kerf[1].EndPoint.Y, kerf[2].StartPoint.Y, 1e-3);
}

TEST(KerfModule, AProgramWithoutMotionIsItsHeader) {
  const auto kerf = Kerf(Numbered({}), 1);
  ASSERT_EQ(kerf.size(), 1U);
  EXPECT_EQ(kerf.front()[Mark::RecordCount], 1);
  std::vector<DrawRecord> nothing;
  EXPECT_TRUE(MakeKerfFile(nothing, 1, Machine()).Records.empty());
}

TEST(KerfModule, MoreRecordsThanTheCountHoldsAreRefused) {
  std::vector<DrawRecord> draw(32767, Line({0, 0, 0}, {10, 0, 0}, 0));
  draw.front() = Header();
  EXPECT_FALSE(MakeKerfFile(draw, 1, Machine()).TooManyRecords);
  EXPECT_EQ(draw.back().RecordIndex, 32767);
  core::MachineData machine = Machine();
  machine.CornerLimitFactor = 0;
  std::vector<DrawRecord> corners(20001, Header());
  for (std::size_t i = 1; i < corners.size(); ++i) {
    corners[i] = i % 2 == 1 ? Line({0, 0, 0}, {10, 0, 0}, 2) : Line({10, 0, 0}, {0, 0, 0}, 2);
  }
  const KerfResult result = MakeKerfFile(corners, 1, machine);
  EXPECT_TRUE(result.TooManyRecords);
  EXPECT_EQ(result.Records.size(), 32767U);
}

// ---- properties ----

/// A walk of lines and arcs that meet, with records of other kinds between them.
std::vector<DrawRecord> AnyProgram() {
  const int count = *rc::gen::inRange(1, 40);
  std::vector<DrawRecord> records;
  Point3 at{100, 100, 0};
  for (int i = 0; i < count; ++i) {
    const auto side = static_cast<std::int16_t>(*rc::gen::inRange(0, 3));
    const auto x = static_cast<float>(*rc::gen::inRange(0, 400000) / 1000.0);
    const auto y = static_cast<float>(*rc::gen::inRange(0, 400000) / 1000.0);
    switch (*rc::gen::inRange(0, 8)) {
      case 0:
        records.push_back(Move(at, {x, y, 0}));
        break;
      case 1:
        records.push_back(Other(RecordCode::Dwell, at));
        continue;
      case 2:
        records.push_back(Other(RecordCode::Settings));
        continue;
      case 3:
      case 4: {
        const double start = *rc::gen::inRange(0, 360000) / 1000.0;
        const double radius = *rc::gen::inRange(5000, 60000) / 1000.0;
        const core::Vector2 out = core::PolarToXY(radius, start);
        const Point3 centre{static_cast<float>(core::RoundPlaces(at.X - out.X, 4)),
                            static_cast<float>(core::RoundPlaces(at.Y - out.Y, 4)), 0};
        records.push_back(
            Arc(centre, radius, start, *rc::gen::inRange(-360000, 360001) / 1000.0, side));
        break;
      }
      default:
        records.push_back(Line(at, {x, y, 0}, side));
    }
    at = records.back().EndPoint;
  }
  return Numbered(std::move(records));
}

RC_GTEST_PROP(KerfModule, AWidthOfNothingChangesOnlySidesAndNumbers, ()) {
  const auto draw = AnyProgram();
  auto programmed = draw;
  const auto kerf = MakeKerfFile(programmed, 0, Machine()).Records;
  RC_ASSERT(kerf.size() == draw.size());
  for (std::size_t i = 0; i < kerf.size(); ++i) {
    DrawRecord expected = draw[i];
    if (expected.Code == RecordCode::LineProfile || expected.Code == RecordCode::ArcProfile) {
      expected.KerfSide = 0;
    }
    RC_ASSERT(Bytes(kerf[i]) == Bytes(expected));
    RC_ASSERT(programmed[i].RecordIndex == static_cast<int>(i + 1));
  }
}

RC_GTEST_PROP(KerfModule, EveryNumberFindsItsWayBack, ()) {
  auto draw = AnyProgram();
  core::MachineData machine = Machine(static_cast<std::int16_t>(*rc::gen::inRange(0, 2)));
  machine.CornerLimitFactor = static_cast<float>(*rc::gen::inRange(0, 3));
  const auto kerf = MakeKerfFile(draw, 0.7, machine).Records;
  RC_ASSERT(kerf.front()[Mark::RecordCount] == static_cast<int>(kerf.size()));
  std::int16_t last = 1;
  for (std::size_t i = 1; i < draw.size(); ++i) {
    const std::int16_t number = draw[i].RecordIndex;
    RC_ASSERT(number > last);
    last = number;
    const DrawRecord& record = kerf[static_cast<std::size_t>(number - 1)];
    RC_ASSERT(record.RecordIndex == static_cast<int>(i + 1));
    RC_ASSERT(record.Code == draw[i].Code);
  }
  for (const DrawRecord& record : kerf) {
    if (record[Mark::CornerArc] == 0) continue;
    const DrawRecord& programmed = draw[static_cast<std::size_t>(record.RecordIndex - 1)];
    RC_ASSERT(programmed.Code == RecordCode::LineProfile ||
              programmed.Code == RecordCode::ArcProfile);
  }
}

}  // namespace
}  // namespace torvane::partprogram
