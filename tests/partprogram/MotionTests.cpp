// Positions, lines, arcs, limit checks and records at a position.
#include <cmath>
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "core/General.h"
#include "partprogram/ArcMotion.h"
#include "partprogram/Conversion.h"

using namespace torvane;
using namespace torvane::partprogram;
using namespace torvane::tests;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

namespace {

DrawRecord Last(const std::vector<std::string>& lines) { return RecordsOf(lines).back(); }

#define EXPECT_END(record, x, y)               \
  EXPECT_NEAR((record).EndPoint.X, (x), 2e-4); \
  EXPECT_NEAR((record).EndPoint.Y, (y), 2e-4)

// ---- positions ----

TEST(Position, StartsAtTheLoadPosition) {
  Conversion conversion;
  conversion.Machine.LoadPositionX = 10;
  conversion.Machine.LoadPositionY = 20;
  const auto result = conversion.Run(std::string_view("G00 X15\r\n"));
  EXPECT_EQ(result.Records[1].StartPoint.X, 10);
  EXPECT_EQ(result.Records[1].StartPoint.Y, 20);
  EXPECT_END(result.Records[1], 15, 20);
}

TEST(Position, IncrementalAddsAndMirroringTakesAway) {
  EXPECT_END(Last({"G00 X10 Y10", "G91", "X5 Y3"}), 15, 13);
  EXPECT_END(Last({"G00 X10 Y10", "G91", "M11", "X5 Y3"}), 5, 13);
  EXPECT_END(Last({"G00 X10 Y10", "G91", "M12", "X5 Y3"}), 15, 7);
  EXPECT_END(Last({"G00 X10 Y10", "G91", "M13", "M10", "X5 Y3"}), 15, 13);
}

TEST(Position, MirroringTurnsAboutTheWorkOffset) {
  EXPECT_END(Last({"G56 X100 Y50", "M11", "G00 X10 Y10"}), 90, 60);
  EXPECT_END(Last({"M13", "G56 X-100 Y-50", "G00 X10 Y10"}), 90, 40);
}

TEST(Position, G56BlocksAddUp) {
  EXPECT_END(Last({"G56 X100", "G56 X10 Y5", "G00 X1 Y1"}), 111, 6);
}

TEST(Position, G92MakesTheCurrentPositionRead) {
  EXPECT_END(Last({"G00 X50 Y40", "G92 X0 Y10", "G00 X5 Y10"}), 55, 40);
  EXPECT_END(Last({"G00 X50 Y40", "M11", "G92 X20", "G00 X5 Y0"}), 65, 0);
}

TEST(Position, G53TakesTheOffsetAwayAndLeavesARecord) {
  const auto records = RecordsOf({"G56 X100", "G00 X1 Y2", "G53", "G00 X1"});
  EXPECT_EQ(records[1].Code, RecordCode::CancelOffsets);
  EXPECT_EQ(TextOf(records[1].Common().Name), "Cancel Offsets");
  EXPECT_EQ(records[1].CentrePoint.X, 101);
  EXPECT_EQ(records[1].CentrePoint.Y, 2);
  EXPECT_EQ(records[1].StartPoint.X, 0);  // the position stands in CentrePoint alone
  EXPECT_END(records[2], 1, 2);
}

TEST(Position, BlocksWithAnOffsetWordOrADwellDoNotMove) {
  EXPECT_END(Last({"G00 X5 Y5", "G56 X0 Y0", "G92 X5 Y5", "G04 X9 K1", "G91", "G00 X1"}), 6, 5);
}

TEST(Position, AMotionWordBesideADwellRepeatsTheLineBefore) {
  // The dwell keeps the block from moving; its motion word acts all the same.
  const auto records = RecordsOf({"G01 X5", "G01 X9 G04 K1"});
  ASSERT_EQ(records.size(), 3U);
  EXPECT_EQ(records[1].StartPoint.X, 0);
  EXPECT_END(records[1], 5, 0);
  EXPECT_EQ(records[2].Code, RecordCode::Dwell);
}

TEST(Position, InchesScaleXAndYButNeverZ) {
  const auto record = Last({"G70", "G00 X1 Y2 Z3"});
  EXPECT_END(record, 25.4, 50.8);
  EXPECT_EQ(record.EndPoint.Z, 3);
}

TEST(Position, AnIncrementalBlockWithoutZCountsItsMarker) {
  EXPECT_EQ(Last({"G91", "G00 X1 Z5"}).EndPoint.Z, 5);
  EXPECT_EQ(Last({"G91", "G00 X1"}).EndPoint.Z, -999);
  EXPECT_EQ(Last({"G91", "G00 X1", "G00 X1"}).EndPoint.Z, -1998);
  EXPECT_EQ(Last({"G90", "G00 X1"}).EndPoint.Z, 0);
}

TEST(Position, MirroringIsNotAppliedInsideASubroutine) {
  EXPECT_END(Last({"M11", "G98 S1 A0 X-100 Y0", "M30", "S1", "G00 X10 Y10", "M02"}), 110, 10);
}

TEST(Position, IncrementalCoordinatesOfASubroutineAreLocal) {
  EXPECT_END(Last({"G98 S1 A90 X100 Y0", "M30", "S1", "G91", "G00 X10 Y0", "G00 X10 Y0", "M02"}),
             100, 20);
}

TEST(Position, RecordsHoldSingles) { EXPECT_EQ(Last({"G00 X12.3 Y0.1"}).EndPoint.X, 12.3F); }

// ---- modal words ----

TEST(Modal, ABlockWithCoordinatesGoesOnInTheModeLastSet) {
  EXPECT_THAT(CodesOf({"G31 T2=3", "G00 X1 Y1", "X2", "G01 X3", "Y4", "G02 X3 Y4 I1 J0", "I1"}),
              ElementsAre(400, 120, 120, 120, 120, 130, 130));
}

TEST(Modal, RapidGoesOnToo) { EXPECT_EQ(RecordsOf({"X5", "Y6"}).size(), 2U); }

TEST(Modal, AMotionWordSetsTheModeWithoutCoordinates) {
  const auto records = RecordsOf({"G01", "X5", "G00", "X6"});
  EXPECT_EQ(records[0][Mark::MotionWord], 1);
  EXPECT_EQ(records[1][Mark::MotionWord], 0);
}

TEST(Modal, OtherRecordsSetTheModeToRapid) {
  for (const char* word : {"G95 I0", "M50", "M55", "M87", "M99", "M00", "M01"}) {
    EXPECT_EQ(Last({"G01 X1 Y1", word, "X5"})[Mark::MotionWord], 0) << word;
  }
  EXPECT_EQ(Last({"G01 X1 Y1", "G04 K1", "X5"})[Mark::MotionWord], 1);
}

TEST(Modal, AStopBetweenBracketsIsTextAndLeavesTheMode) {
  EXPECT_EQ(Last({"G01 X1 Y1", "(TAKE M00 OUT)", "X5"})[Mark::MotionWord], 1);
}

TEST(Modal, SomeBlocksAreNeverTakenForAModalMove) {
  for (const char* block : {"G04 K1 X5", "G53 X5", "G56 X5", "G92 X5", "G95 I5", "M50 Y5", "M55 I1",
                            "M87 X5", "M99 X5"}) {
    for (const auto code : CodesOf({"G02 X0 Y0", block})) {
      EXPECT_TRUE(code != RecordCode::Move || code == RecordCode::ArcProfile) << block;
    }
    EXPECT_LE(CodesOf({"G02", block}).size(), 1U) << block;
  }
}

TEST(Modal, TwoMotionWordsInOneBlockMakeNoMoveAndTheLastInOrderStays) {
  const auto records = RecordsOf({"G03 G01 X5 Y5", "I1"});
  ASSERT_EQ(records.size(), 1U);
  EXPECT_EQ(records[0][Mark::MotionWord], 3);
}

TEST(Modal, AWordInsideAnotherCounts) { EXPECT_EQ(Last({"G010 X5"})[Mark::MotionWord], 1); }

TEST(Modal, M100TurnsMirroringOff) { EXPECT_END(Last({"M11", "M100", "G00 X5 Y0"}), 5, 0); }

// ---- lines ----

TEST(Line, IsAMoveWithTheBeamOffAndAProfileWithTheBeamOn) {
  const auto records = RecordsOf({"G01 X3 Y4", "G31 T2=3", "G42", "G01 X3 Y14 F500"});
  EXPECT_EQ(records[0].Code, RecordCode::Move);
  EXPECT_EQ(TextOf(records[0].Common().Name), "Move");
  EXPECT_EQ(records[0][Figure::Length], 5);
  EXPECT_EQ(records[0][Figure::SecondLength], 5);
  EXPECT_EQ(records[0][Figure::ThirdLength], 5);
  EXPECT_EQ(records[0][Figure::Angle], 53.13F);
  EXPECT_EQ(records[0][Mark::MotionWord], 1);
  EXPECT_EQ(records[0].Common().BeamState1.On, 0);
  const DrawRecord& cut = records[2];
  EXPECT_EQ(cut.Code, RecordCode::LineProfile);
  EXPECT_EQ(TextOf(cut.Common().Name), "Line Profile");
  EXPECT_EQ(cut[Figure::Length], 10);
  EXPECT_EQ(cut[Figure::Angle], 90);
  EXPECT_EQ(cut.KerfSide, 2);
  EXPECT_EQ(cut.Feed, 500);
  EXPECT_EQ(cut.MidPoint.Y, 9);
  EXPECT_EQ(cut.CentrePoint.Y, 9);
  EXPECT_EQ(cut.ProfileStart.Y, 4);
  EXPECT_EQ(cut.ProfileEnd.Y, 14);
}

TEST(Line, CarriesTheBeamStatesWhileProfiling) {
  const auto record = Last({"G31 T2=3", "G01 X1"});
  EXPECT_EQ(record.Common().BeamState1.On, -1);
  EXPECT_EQ(record.Common().BeamState1.Kind, 'P');
  EXPECT_EQ(TextOf(record.Common().BeamState1.ToolName), "Laser 1");
  EXPECT_EQ(record.Common().BeamState1.StationNumber, 1);
  EXPECT_EQ(record.Common().BeamState1.StationType, 3);
  EXPECT_EQ(record.Common().ProfileNumber, 1);
  EXPECT_EQ(record.Common().BeamState2.ProfilingMark, -1);
  EXPECT_EQ(record.OwnNumber, record.RecordIndex);
  EXPECT_EQ(record.Common().BeamState2.On, 0);
}

TEST(Line, CarriesClearedBeamStatesOtherwise) {
  const auto record = Last({"G01 X1"});
  EXPECT_EQ(record.Common().BeamState1.Kind, ' ');
  EXPECT_EQ(record.Common().BeamState2.ProfilingMark, 0);
  EXPECT_EQ(record.OwnNumber, 0);
}

TEST(Line, OfNoLengthHasAngleZeroAndABoxOfTen) {
  const auto record = Last({"G01 X5 Y5", "G01 X5 Y5"});
  EXPECT_EQ(record[Figure::Length], 0);
  EXPECT_EQ(record[Figure::Angle], 0);
  EXPECT_EQ(record.BoxOuter.MaxX - record.BoxOuter.MinX, 10);
  EXPECT_EQ(record.BoxOuter.MaxY - record.BoxOuter.MinY, 10);
}

TEST(Line, EndsAreRoundedToFourPlaces) {
  EXPECT_EQ(Last({"G01 X1.00004 Y1.00006"}).EndPoint.X, 1.0F);
  EXPECT_EQ(Last({"G01 X1.00004 Y1.00006"}).EndPoint.Y, 1.0001F);
}

TEST(Line, RoundsThePositionItself) {
  const auto stop = Last({"G01 X1.00004 Y1.00006", "M00"});
  EXPECT_EQ(stop.CentrePoint.X, 1.0F);
  EXPECT_EQ(stop.CentrePoint.Y, 1.0001F);
  EXPECT_EQ(Last({"G02 X0.00014 I0.00007", "M00"}).CentrePoint.X, 0.00014F);
}

TEST(Line, AThousandIncrementalStepsEndOnTheirSum) {
  std::vector<std::string> lines{"G91"};
  lines.insert(lines.end(), 1000, "G01 X0.1 Y-0.3");
  EXPECT_EQ(Last(lines).EndPoint.X, 100.0F);
  EXPECT_EQ(Last(lines).EndPoint.Y, -300.0F);
}

TEST(Line, NeedsXOrY) { EXPECT_THAT(CodesOf({"G01 Z5", "G00 I5"}), IsEmpty()); }

// ---- arcs ----

TEST(CentreArc, IsSolved) {
  const auto record = Last({"G00 X10 Y0", "G03 X0 Y10 I-10 J0"});
  EXPECT_EQ(record.Code, RecordCode::ArcProfile);
  EXPECT_EQ(TextOf(record.Common().Name), "Arc Profile");
  EXPECT_EQ(record[Figure::Radius], 10);
  EXPECT_NEAR(record[Figure::ArcLength], 15.708, 1e-3);
  EXPECT_EQ(record[Figure::StartAngle], 0);
  EXPECT_NEAR(record[Figure::Sweep], 90, 1e-6);
  EXPECT_EQ(record[Mark::ArcWord], 3);
  EXPECT_EQ(record[Mark::MotionWord], 3);
  EXPECT_EQ(record.CentrePoint.X, 0);
  EXPECT_NEAR(record.MidPoint.X, 7.0711, 1e-4);
  EXPECT_END(record, 0, 10);
}

TEST(CentreArc, WithIAloneIsAFullCircle) {
  const auto record = Last({"G00 X10 Y0", "G02 I-10"});
  EXPECT_EQ(record[Figure::Sweep], -360);
  EXPECT_END(record, 10, 0);
}

TEST(CentreArc, AFullCircleStaysOneInInchesAndInATurnedSubroutine) {
  EXPECT_EQ(Last({"G70", "G01 X2.12345 Y1.98765", "G02 X2.12345 Y1.98765 I-0.5"})[Figure::Sweep],
            -360);
  for (int angle = 1; angle < 360; ++angle) {
    const auto record = Last({"G98 S1 A" + std::to_string(angle), "M30", "S1", "G01 X7.3 Y1.9",
                              "G02 X7.3 Y1.9 I-5 J1", "M02"});
    EXPECT_EQ(record[Figure::Sweep], -360) << angle;
  }
}

TEST(CentreArc, AFullCircleStaysOneAsOftenAsItIsTold) {
  std::vector<std::string> lines{"G70", "G01 X1.123456 Y2.654321", "F900"};
  lines.insert(lines.end(), 3, "G02 X1.123456 Y2.654321 I-0.333333 J0.111111");
  lines.emplace_back("G01 X1.123456 Y2.654321");
  lines.emplace_back("G03 Y2.654321 R0.5");
  lines.emplace_back("G01 X3.333333");
  lines.emplace_back("G01 X3.333333");
  lines.emplace_back("G02 X3.333333 Y2.654321 I0.3");
  const auto records = RecordsOf(lines);
  EXPECT_EQ(records.size(), 9U);
  for (const auto& record : records) {
    if (record.Code == RecordCode::ArcProfile) {
      EXPECT_EQ(std::abs(record[Figure::Sweep]), 360);
    }
  }
}

TEST(CentreArc, AShortArcIsNeverTakenForACircle) {
  EXPECT_NEAR(Last({"G01 X10 Y5", "G03 X10 Y5.00004 I-5"})[Figure::Sweep], 0.00046, 1e-5);
  EXPECT_NEAR(Last({"G01 X10.00004 Y5", "G03 X10.00004 Y5.00004 I-5"})[Figure::Sweep], 0.00046,
              1e-5);
}

TEST(CentreArc, WithNothingIsAFullCircleOfNoRadius) {
  const auto record = Last({"G00 X10 Y0", "G02 X10"});
  EXPECT_EQ(record[Figure::Radius], 0);
  EXPECT_EQ(std::abs(record[Figure::Sweep]), 360);
  EXPECT_EQ(record[Figure::ArcLength], 0);
}

TEST(CentreArc, KeepsItsCodeWithTheBeamOff) {
  EXPECT_EQ(Last({"G02 I5"}).Code, RecordCode::ArcProfile);
  EXPECT_EQ(Last({"G02 I5"}).Common().BeamState1.On, 0);
  EXPECT_EQ(Last({"G31 T2=3", "G02 I5"}).Common().BeamState1.On, -1);
}

TEST(CentreArc, AnEndFiveHundredthsOffPassesAndAThousandthMoreFails) {
  for (const int far : {0, 100, 1000, 2345}) {
    const std::string x = std::to_string(far);
    const std::string on = "G00 X" + x + " Y0";
    EXPECT_EQ(Convert({on, "G03 X" + x + "+20.05 Y0 I10 J0"}).CriticalErrors, 0) << far;
    EXPECT_EQ(Convert({on, "G03 X" + x + "+20.051 Y0 I10 J0"}).CriticalErrors, 1) << far;
    EXPECT_EQ(Convert({on, "G03 X" + x + "+19.95 Y0 I10 J0"}).CriticalErrors, 0) << far;
    EXPECT_EQ(Convert({on, "G03 X" + x + "+19.949 Y0 I10 J0"}).CriticalErrors, 1) << far;
  }
}

TEST(CentreArc, ThatFailsLeavesNoRecordAndGoesOnFromTheProgrammedPoint) {
  const auto records = RecordsOf({"G03 X50 Y0 I1 J0", "G01 X60"});
  ASSERT_EQ(records.size(), 1U);
  EXPECT_EQ(records[0].StartPoint.X, 50);
}

struct SenseCase {
  const char* Word;
  std::int16_t YDirection;
  const char* Mirror;
  int CentreSign;
  int RadiusSign;
};
class ArcSense : public ::testing::TestWithParam<SenseCase> {};
TEST_P(ArcSense, FollowsTheTable) {
  const SenseCase& row = GetParam();
  Conversion conversion;
  conversion.Machine.YDirection = row.YDirection;
  const std::string word = row.Word;
  const auto sweep = [&](const std::vector<std::string>& lines) {
    return conversion.Run(lines).Records.back()[Figure::Sweep];
  };
  EXPECT_EQ(sweep({row.Mirror, "G00 X0 Y0", word + " I5"}), 360 * row.CentreSign);
  EXPECT_NEAR(sweep({row.Mirror, "G00 X10 Y0", word + " X-10 Y0 I-10 J0"}), 180 * row.CentreSign,
              1e-4);
  EXPECT_NEAR(sweep({row.Mirror, "G00 X0 Y0", word + " X20 Y0 R10"}), 180 * row.RadiusSign, 1e-4);
}
// A radius arc does not look at the Y direction.
INSTANTIATE_TEST_SUITE_P(
    Motion, ArcSense,
    ::testing::Values(SenseCase{"G02", 1, "M10", -1, 1}, SenseCase{"G02", 1, "M11", 1, -1},
                      SenseCase{"G02", 1, "M12", 1, -1}, SenseCase{"G02", 1, "M13", -1, 1},
                      SenseCase{"G02", 0, "M10", 1, 1}, SenseCase{"G02", 0, "M11", -1, -1},
                      SenseCase{"G02", 2, "M13", 1, 1}, SenseCase{"G03", 1, "M10", 1, -1},
                      SenseCase{"G03", 1, "M12", -1, 1}, SenseCase{"G03", 0, "M10", -1, -1},
                      SenseCase{"G03", 0, "M11", 1, 1}));

TEST(RadiusArc, APositiveRadiusTakesTheShortWayAndANegativeOneTheLong) {
  for (const char* word : {"G02", "G03"}) {
    for (const char* end : {"X10 Y0", "X0 Y10", "X-7 Y3", "X-3 Y-8", "X0 Y-10"}) {
      const auto small = Last({std::string(word) + " " + end + " R8"});
      const auto large = Last({std::string(word) + " " + end + " R-8"});
      EXPECT_LE(std::abs(small[Figure::Sweep]), 180) << word << end;
      EXPECT_GE(std::abs(large[Figure::Sweep]), 180) << word << end;
      EXPECT_NEAR(std::abs(small[Figure::Sweep]) + std::abs(large[Figure::Sweep]), 360, 1e-3);
      EXPECT_EQ(large[Figure::Radius], 8);
      EXPECT_NEAR(small.EndPoint.X, large.EndPoint.X, 2e-4);
      EXPECT_NEAR(small.EndPoint.Y, large.EndPoint.Y, 2e-4);
    }
  }
}

TEST(RadiusArc, AHalfCirclePassesWhereverItStands) {
  for (const char* x : {"0", "0.1", "100.3", "1234.567", "2999.999"}) {
    for (const char* r : {"0.05", "1.1", "33.333", "123.4567"}) {
      const std::string start = std::string("G00 X") + x + " Y0.7";
      const std::string arc = std::string("G02 X") + x + "+" + r + "+" + r + " Y0.7 R" + r;
      const auto result = Convert({start, arc});
      EXPECT_EQ(result.CriticalErrors, 0) << x << " " << r;
      if (result.CriticalErrors > 0) continue;
      // The ends are singles: half a step of them moves the centre by the root of it.
      EXPECT_NEAR(std::abs(result.Records.back()[Figure::Sweep]), 180, 4);
    }
  }
}

TEST(RadiusArc, AChordOfTwiceTheRadiusHasItsCentreInTheMiddle) {
  const auto record = Last({"G00 X0 Y0", "G02 X20 Y0 R10"});
  EXPECT_EQ(record.CentrePoint.X, 10);
  EXPECT_NEAR(record.CentrePoint.Y, 0, 1e-6);
}

TEST(RadiusArc, AChordThatIsTooLongIsCritical) {
  EXPECT_THAT(MessagesOf(Convert({"G00 X0 Y0", "G02 X20.001 Y0 R10"})),
              ElementsAre("C Non-Interpolated Arc (Invalid R) "));
}

TEST(RadiusArc, FromAPointToItselfIsRead) {
  EXPECT_EQ(Convert({"G00 X5 Y5", "G02 X5 Y5 R10"}).CriticalErrors, 0);
}

TEST(Arc, CentreWordsTurnWithTheSubroutine) {
  const auto record =
      Last({"G98 S1 A90 X100 Y0", "M30", "S1", "G00 X10 Y0", "G03 X0 Y10 I-10 J0", "M02"});
  EXPECT_NEAR(record.CentrePoint.X, 100, 1e-4);
  EXPECT_NEAR(record.CentrePoint.Y, 0, 1e-4);
  EXPECT_END(record, 90, 0);
}

TEST(Arc, CentreWordsAreMirroredInTheMainFile) {
  const auto record = Last({"M11", "G00 X10 Y0", "G02 X0 Y10 I-10 J0"});
  EXPECT_NEAR(record.CentrePoint.X, 0, 1e-6);
  EXPECT_END(record, 0, 10);
}

TEST(Arc, AMirroredArcInASubroutineIsNotCorrected) {
  // The centre stays where it is written, yet the sense turns over: the long way round.
  const auto record = Last({"M11", "Q1", "M30", "S1", "G00 X10 Y0", "G03 X0 Y10 I-10 J0", "M02"});
  EXPECT_NEAR(record[Figure::Sweep], -270, 1e-4);
}

TEST(Arc, CentreAndRadiusAreScaledFromInches) {
  EXPECT_FLOAT_EQ(Last({"G70", "G02 I1"})[Figure::Radius], 25.4F);
  EXPECT_FLOAT_EQ(Last({"G70", "G02 X1 Y1 R1"})[Figure::Radius], 25.4F);
}

// ---- limits ----

struct LimitFixture : ::testing::Test {
  LimitFixture() {
    Case.Machine.TravelMinX = 0;
    Case.Machine.TravelMaxX = 1000;
    Case.Machine.TravelMinY = 0;
    Case.Machine.TravelMaxY = 500;
  }
  std::vector<std::string> Messages(const std::vector<std::string>& lines) {
    return MessagesOf(Case.Run(lines));
  }
  Conversion Case;
};

TEST_F(LimitFixture, APointOnTheLimitIsInside) {
  EXPECT_THAT(Messages({"G00 X0 Y0", "G00 X1000 Y500"}), IsEmpty());
}

TEST_F(LimitFixture, OneMessageAnAxisAndBlockAndTheRecordStays) {
  EXPECT_THAT(Messages({"G00 X1000.1 Y-0.1", "G00 X1001"}),
              ElementsAre("W Out of limits in X ", "W Out of limits in Y ", "W Out of limits in X ",
                          "W Out of limits in Y "));
  EXPECT_EQ(Case.Run(std::vector<std::string>{"G00 X2000 Y0"}).Records.size(), 2U);
}

TEST_F(LimitFixture, APathThatSwingsOutIsFound) {
  EXPECT_THAT(Messages({"G00 X10 Y100", "G03 X10 Y200 I0 J50"}), IsEmpty());
  EXPECT_THAT(Messages({"G00 X10 Y100", "G02 X10 Y200 I0 J50"}),
              ElementsAre("W Out of limits in X "));
}

TEST_F(LimitFixture, AnArcThatTouchesTheLimitIsInside) {
  EXPECT_THAT(Messages({"G00 X100 Y50", "G02 I-50"}), IsEmpty());
}

TEST_F(LimitFixture, MessagesOfAPathStandInItsOrder) {
  // From the right end upward: first the top, then the left side.
  EXPECT_THAT(Messages({"G00 X90 Y450", "G03 X90 Y450 I-60 J0"}),
              ElementsAre("W Out of limits in Y ", "W Out of limits in X "));
}

TEST_F(LimitFixture, LoadPositionAndClampsReportEachTime) {
  EXPECT_THAT(Messages({"M50 Y600"}),
              ElementsAre("W Out of limits in Y ", "W Out of limits in Y "));
  EXPECT_THAT(
      Messages({"G00 X-5 Y0", "M87", "M99"}),
      ElementsAre("W Out of limits in X ", "W Out of limits in X ", "W Out of limits in X "));
}

TEST_F(LimitFixture, ABlockWithoutPositionWordsIsNotChecked) {
  EXPECT_THAT(Messages({"G00 X-5 Y0", "G04 K1", "F100"}), ElementsAre("W Out of limits in X "));
}

TEST_F(LimitFixture, ARepositionMovesTheXLimitsByItsI) {
  EXPECT_THAT(Messages({"G95 I100", "G00 X-100 Y0", "G00 X900"}), IsEmpty());
  EXPECT_THAT(Messages({"G95 I100", "G00 X950 Y0"}), ElementsAre("W Out of limits in X "));
  EXPECT_THAT(Messages({"G95 I-100", "G00 X1050 Y0"}), IsEmpty());
  EXPECT_THAT(Messages({"M11", "G95 I100", "G00 X-1050 Y0"}), IsEmpty());
}

// ---- records at a position ----

TEST(Reposition, CarriesItsDistancesAndTheMovedLimits) {
  const auto record = Last({"G00 X5 Y6", "G95 I100 J2 K3"});
  EXPECT_EQ(record.Code, RecordCode::Reposition);
  EXPECT_EQ(TextOf(record.Common().Name), "Reposition");
  EXPECT_EQ(record[Figure::RepositionX], 100);
  EXPECT_EQ(record[Figure::Backoff], 2);
  EXPECT_EQ(record[Figure::LimitXMin], -10100);
  EXPECT_EQ(record[Figure::LimitXMax], 9900);
  EXPECT_EQ(record[Figure::Return], 3);
  EXPECT_EQ(record.StartPoint.X, 5);
  EXPECT_EQ(record.BoxOuter.MinX, 0);
  EXPECT_EQ(record.BoxOuter.MaxY, 11);
}

TEST(Reposition, MirroringTurnsItsDistancesOver) {
  const auto record = Last({"M13", "G95 I100 J2 K3"});
  EXPECT_EQ(record[Figure::RepositionX], -100);
  EXPECT_EQ(record[Figure::Backoff], -2);
  EXPECT_EQ(record[Figure::Return], -3);
}

TEST(Reposition, FiveMillimetresPassAndMoreIsAWarning) {
  EXPECT_THAT(MessagesOf(Convert({"G95 I10 J5.0 K-5"})), IsEmpty());
  EXPECT_THAT(MessagesOf(Convert({"G95 I10 J5.1 K-5.1"})),
              ElementsAre("W Reposition with Excessive Backoff distance (J) ",
                          "W Reposition with Excessive Return distance (K) "));
  EXPECT_EQ(MessagesOf(Convert({"G70", "G95 J0.2"})).size(), 1U);
}

TEST(Dwell, NeedsATimeAboveZero) {
  EXPECT_THAT(CodesOf({"G04", "G04 K0", "G04 K-1"}), IsEmpty());
  const auto record = Last({"G70", "G00 X1 Y1", "G04 K0.5"});
  EXPECT_EQ(record.Code, RecordCode::Dwell);
  EXPECT_EQ(record[Figure::DwellTime], 0.5F);
  EXPECT_FLOAT_EQ(record.CentrePoint.X, 25.4F);
}

TEST(Settings, AreRecordedAndStored) {
  const auto records = RecordsOf({"G30 1=5,24=7", "G00 X1", "G32 2=9", "G04 K1"});
  EXPECT_EQ(records[0].Code, RecordCode::Settings);
  EXPECT_EQ(records[0][Mark::SettingsMode], 0);
  EXPECT_EQ(records[0].Common().Settings[0], 5);
  EXPECT_EQ(records[0].Common().Settings[23], 7);
  EXPECT_EQ(records[0].Common().Settings[1], -999);
  EXPECT_EQ(records[1].Common().Settings[0], 5);
  EXPECT_EQ(records[2][Mark::SettingsMode], 2);
  EXPECT_EQ(records[2].Common().Settings[0], -999);  // a Settings record holds its own alone
  EXPECT_EQ(records[2].Common().Settings[1], 9);
  EXPECT_EQ(records[3].Common().Settings[0], 5);
  EXPECT_EQ(records[3].Common().Settings[1], 9);
}

TEST(Settings, WithoutAValueLeaveNoRecord) { EXPECT_THAT(CodesOf({"G30", "G32 1=Z"}), IsEmpty()); }

TEST(Settings, ASettingStandsInsideALongerOne) {
  const auto record = Last({"G32 14=3"});
  EXPECT_EQ(record.Common().Settings[13], 3);
  EXPECT_EQ(record.Common().Settings[3], 3);  // "4=" stands in "14="
}

TEST(Settings, TheFirstPlaceOfASettingCounts) {
  const auto record = Last({"G32 14=3,4=8"});
  EXPECT_EQ(record.Common().Settings[3], 3);
}

TEST(Settings, BlanksDoNotDivideThem) {
  // Without its blanks the block reads "1=152=6": setting 1 is 152.
  const auto record = Last({"G32 1=15 2=6"});
  EXPECT_EQ(record.Common().Settings[0], 152);
  EXPECT_EQ(record.Common().Settings[1], 6);
}

TEST(Settings, TheBeamWordSetsSettingTwo) {
  EXPECT_EQ(Last({"G31 T2=3"}).Common().Settings[1], 3);
  EXPECT_EQ(Last({"G31 T2=3"})[Mark::SettingsMode], 1);
}

TEST(Profiling, IsOnFromThreeAndOffBelow) {
  EXPECT_EQ(Last({"G31 T2=3", "G01 X1"}).Code, RecordCode::LineProfile);
  EXPECT_EQ(Last({"G31 T2=4", "G01 X1"}).Code, RecordCode::LineProfile);
  EXPECT_EQ(Last({"G31 T2=3", "G31 T2=2", "G01 X1"}).Code, RecordCode::Move);
  EXPECT_EQ(Last({"G31 T2=3", "G31 T2=", "G01 X1"}).Code, RecordCode::Move);
  EXPECT_EQ(Last({"G30 T2=3", "G01 X1"}).Code, RecordCode::Move);
}

TEST(Profiling, TakesTheWholeOfAnyValue) {
  EXPECT_EQ(Last({"P5=3", "G31 T2=P5", "G01 X1"}).Code, RecordCode::LineProfile);
  EXPECT_EQ(Last({"G31 T2=2+1", "G01 X1"}).Code, RecordCode::LineProfile);
  EXPECT_EQ(Last({"G31 T2=2.9", "G01 X1"}).Code, RecordCode::Move);
  EXPECT_EQ(Last({"G31 T2=3.9", "G01 X1"}).Code, RecordCode::LineProfile);
}

TEST(Profiling, BeginsBehindTheMoveOfItsBlock) {
  const auto records = RecordsOf({"G01 X1 G31 T2=3", "X2"});
  EXPECT_EQ(records[1].Code, RecordCode::Move);
  EXPECT_EQ(records[2].Code, RecordCode::LineProfile);
}

TEST(LoadPosition, GoesToTheMachinesXAndItsOwnY) {
  Conversion conversion;
  conversion.Machine.LoadPositionX = 7;
  conversion.Machine.LoadPositionY = 8;
  auto result = conversion.Run(std::string_view("G56 X100 Y100\r\nM50\r\nM50 Y33\r\n"));
  EXPECT_EQ(result.Records[1].Code, RecordCode::LoadPosition);
  EXPECT_EQ(result.Records[1][Figure::LoadX], 7);
  EXPECT_EQ(result.Records[1][Figure::LoadY], 8);
  EXPECT_EQ(result.Records[2].CentrePoint.X, 7);
  EXPECT_EQ(result.Records[2].CentrePoint.Y, 33);
  EXPECT_EQ(result.Records[2][Figure::LoadY], 33);
  EXPECT_EQ(result.LoadY, 33);
  EXPECT_FLOAT_EQ(conversion.Run(std::string_view("G70\r\nM50 Y2\r\n")).LoadY, 50.8F);
  EXPECT_EQ(conversion.Run(std::string_view("M30\r\n")).LoadY, 8);
}

TEST(FlipRotate, FlagsByIAndJ) {
  const auto record = Last({"M55 I1 J0 A90"});
  EXPECT_EQ(record.Code, RecordCode::FlipRotate);
  EXPECT_EQ(TextOf(record.Common().Name), "Flip / Rotate");
  EXPECT_EQ(record[Mark::FlipX], -1);
  EXPECT_EQ(record[Mark::FlipY], 0);
  EXPECT_EQ(record[Figure::Rotation], 90);
  EXPECT_EQ(Last({"M55 J-1"})[Mark::FlipY], -1);
  EXPECT_EQ(Last({"M55"})[Figure::Rotation], 0);
}

TEST(OpenClamps, TellsM87FromM99) {
  EXPECT_EQ(Last({"M87"}).Code, RecordCode::OpenClamps);
  EXPECT_EQ(Last({"M87"})[Mark::OpensClamps], -1);
  EXPECT_EQ(Last({"M99"})[Mark::OpensClamps], 0);
  EXPECT_EQ(CodesOf({"M87 M99"}).size(), 1U);
}

TEST(ProgramStop, ByM00AndM01) {
  EXPECT_THAT(CodesOf({"M00", "M01", "M 01", "M00 (CHANGE)"}), ElementsAre(321, 321, 321, 321));
}

TEST(ProgramStop, BetweenBracketsIsText) {
  EXPECT_THAT(CodesOf({"(AFTER M00)", "(AFTER M01)"}), IsEmpty());
  EXPECT_THAT(CodesOf({"M00 (AFTER M00)"}), ElementsAre(321));
  EXPECT_THAT(CodesOf({"(M00"}), ElementsAre(321));
}

// ---- totals ----

TEST(Totals, TakeLengthsByKindAndTheGaps) {
  const auto result = Convert({"G00 X3 Y4", "G31 T2=3", "G01 X3 Y14", "G31 T2=1", "G01 X3 Y20"});
  EXPECT_EQ(result.Totals.ProgramTime, 0);
  EXPECT_FLOAT_EQ(result.Totals.MoveLength, 11);
  EXPECT_FLOAT_EQ(result.Totals.ProfileLength, 10);
}

TEST(Totals, AGapIsTheWayToTheStartOfTheNextRecord) {
  // The position moves by a call without a record of its own.
  const auto result = Convert({"G98 S1 A0 X30 Y40", "M30", "S1", "G04 K1", "M02"});
  EXPECT_FLOAT_EQ(result.Totals.MoveLength, 50);
}

TEST(Totals, AnArcCountsAsProfileWithTheSignOfItsSweep) {
  EXPECT_NEAR(Convert({"G00 X0 Y0", "G03 I10"}).Totals.ProfileLength, 62.83185, 1e-4);
  EXPECT_NEAR(Convert({"G00 X0 Y0", "G02 I10"}).Totals.ProfileLength, -62.83185, 1e-4);
}

}  // namespace
