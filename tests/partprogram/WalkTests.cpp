// The walk: calls, jumps, decisions, modal words and the report.
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "core/General.h"
#include "partprogram/Conversion.h"
#include "partprogram/Walker.h"

using namespace torvane;
using namespace torvane::partprogram;
using namespace torvane::tests;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

namespace {

/// X of the end of each record behind the header.
std::vector<float> EndsX(const std::vector<std::string>& lines) {
  std::vector<float> ends;
  for (const auto& record : RecordsOf(lines)) ends.push_back(record.EndPoint.X);
  return ends;
}

TEST(Walk, AProgramWithoutMotionGivesTheHeaderAlone) {
  const auto result = Convert({"! NOTHING", "M30"});
  ASSERT_EQ(result.Records.size(), 1U);
  EXPECT_EQ(result.Records[0].Code, RecordCode::Sheet);
  EXPECT_EQ(TextOf(result.Records[0].Common().Name), "Sheet");
  EXPECT_EQ(result.Records[0][Mark::RecordCount], 1);
  EXPECT_EQ(result.Records[0].RecordIndex, 1);
  EXPECT_EQ(result.Records[0].KerfSide, 1);  // the machine's Y direction
}

TEST(Walk, AnEmptyProgramGivesTheHeaderAlone) {
  const auto result = Convert(std::vector<std::string>{});
  EXPECT_EQ(result.Records.size(), 1U);
}

TEST(Walk, AnEmptyHeaderYieldsNoMaterialAndASheetOfAThousand) {
  const auto result = Convert({"M30"});
  EXPECT_EQ(result.MaterialText, "Material :  ");
  EXPECT_EQ(result.SheetText, "Sheet Size :  1000x1000");
  EXPECT_EQ(result.Records[0][Figure::SheetX], 1000);
  EXPECT_EQ(result.Records[0][Figure::SheetY], 1000);
}

TEST(Walk, AProgramThatEndsWithoutM30IsComplete) {
  EXPECT_THAT(EndsX({"G00 X1 Y0", "X2"}), ElementsAre(1, 2));
}

TEST(Walk, NothingBehindM30IsReached) {
  EXPECT_THAT(EndsX({"G00 X1 Y0", "M30", "S1", "G00 X5", "M02"}), ElementsAre(1));
}

TEST(Walk, ADefinitionInFrontOfM30RunsAsPlainBlocks) {
  EXPECT_THAT(EndsX({"S1", "G00 X5", "M02", "G00 X6", "M30"}), ElementsAre(5, 6));
}

TEST(Walk, M02HasNoEffectInTheMainFile) { EXPECT_THAT(EndsX({"M02", "G00 X6"}), ElementsAre(6)); }

// ---- calls ----

TEST(Walk, ACallMovesTheOriginAndCountsItsOwnLines) {
  const auto records = RecordsOf({"G98 S7 A0 X100 Y50", "M30", "S7", "G00 X1 Y2", "G01 X3", "M02"});
  ASSERT_EQ(records.size(), 2U);
  EXPECT_EQ(records[0].EndPoint.X, 101);
  EXPECT_EQ(records[0].EndPoint.Y, 52);
  EXPECT_EQ(records[1].EndPoint.X, 103);
  EXPECT_EQ(records[1].BlockNumber, 1);
  EXPECT_EQ(records[1].SubNumber, 7);
  EXPECT_EQ(records[1].SubBlock, 3);  // the opening line counts
}

TEST(Walk, AnSubroutineTurnsItsCoordinates) {
  const auto records = RecordsOf({"G98 S7 A90 X100 Y50", "M30", "S7", "G00 X10 Y0", "M02"});
  EXPECT_NEAR(records[0].EndPoint.X, 100, 1e-4);
  EXPECT_NEAR(records[0].EndPoint.Y, 60, 1e-4);
}

TEST(Walk, ACallWithoutATurnsBy999Degrees) {
  const auto records = RecordsOf({"G98 S5", "M30", "S5", "G00 X10 Y0", "M02"});
  const auto turned = core::PolarToXY(10, -999);
  EXPECT_NEAR(records[0].EndPoint.X, turned.X, 1e-3);
  EXPECT_NEAR(records[0].EndPoint.Y, turned.Y, 1e-3);
}

TEST(Walk, QCallsWithoutTurnFromTheCurrentPosition) {
  const auto records = RecordsOf({"G00 X20 Y30", "Q4", "G00 X1", "M30", "S4", "G00 X1 Y1", "M02"});
  ASSERT_EQ(records.size(), 3U);
  EXPECT_EQ(records[1].EndPoint.X, 21);
  EXPECT_EQ(records[1].EndPoint.Y, 31);
  EXPECT_EQ(records[2].EndPoint.X, 1);
  EXPECT_EQ(records[2].SubNumber, 0);
  EXPECT_EQ(records[2].SubBlock, 0);
}

TEST(Walk, ABlockThatCalledEndsThere) {
  EXPECT_THAT(CodesOf({"Q4 G00 X5 Y5", "M30", "S4", "M02"}), IsEmpty());
}

TEST(Walk, M30AndAbortInASubroutineLeaveThatSubroutineOnly) {
  EXPECT_THAT(EndsX({"Q4", "G00 X9", "M30", "S4", "G00 X1 Y0", "M30", "G00 X2", "M02"}),
              ElementsAre(1, 9));
  EXPECT_THAT(EndsX({"Q4", "G00 X9", "M30", "S4", "G00 X1 Y0", "ABORT", "G00 X2", "M02"}),
              ElementsAre(1, 9));
}

TEST(Walk, ASubroutineWithoutM02EndsAtItsEnd) {
  EXPECT_THAT(EndsX({"Q4", "G00 X9 Y0", "M30", "S4", "G00 X1 Y0"}), ElementsAre(1, 9));
}

TEST(Walk, TheLastDefinitionOfANumberStands) {
  EXPECT_THAT(EndsX({"Q4", "M30", "S4", "G00 X1 Y0", "M02", "S4", "G00 X2 Y0", "M02"}),
              ElementsAre(2));
}

TEST(Walk, AnSInsideADefinitionOpensNothing) {
  const std::vector<std::string> program = {"Q1",          "M30",       "S1", "G00 X1 Y1",
                                            "M00 (POS 3)", "G00 X2 Y2", "M02"};
  EXPECT_THAT(EndsX(program), ElementsAre(1, 1, 2)) << "the stop stands where the head is";
  const auto result = Convert(program);
  ASSERT_EQ(result.Subs.size(), 1U);
  EXPECT_EQ(result.Subs.at(1), "S1 \r\nG00 X1 Y1 \r\nM00 (POS 3) \r\nG00 X2 Y2 \r\nM02 \r\n");
}

TEST(Walk, M02OnTheLineThatAJumpArrivesAtDoesNotReturn) {
  const std::map<std::int16_t, std::string> subs = {
      {4, "S4\r\nGOTO 20\r\nG00 X2\r\nN20 M02\r\nG00 X3\r\nM02\r\nG00 X4\r\n"}};
  Walker walker("Q4\r\nM30\r\n", subs);
  ASSERT_EQ(walker.Next(), WalkStep::Block);
  walker.Call(4);
  ASSERT_EQ(walker.Next(), WalkStep::Block);
  walker.Jump(20);
  std::vector<std::string> read;
  while (walker.Next() == WalkStep::Block) read.emplace_back(walker.CurrentLine());
  EXPECT_THAT(read, ElementsAre("N20 M02", "G00 X3", "M30")) << "the next one returns";
}

TEST(Walk, ADefinitionEndsAtItsFirstM02WhateverJumpsThere) {
  EXPECT_THAT(EndsX({"Q4", "G00 X9 Y0", "M30", "S4", "G00 X1 Y0", "GOTO 20", "G00 X2", "N20 M02",
                     "G00 X3", "M02"}),
              ElementsAre(1, 9));
}

TEST(Walk, AJumpToNoLineEndsTheSubroutineAndItsSearch) {
  EXPECT_THAT(
      EndsX({"Q4", "Q5", "M30", "S4", "GOTO 77", "M02", "S5", "G00 X1 Y0", "M02", "G00 X2"}),
      ElementsAre(1))
      << "the next M02 returns";
}

TEST(Walk, ASubroutineFileHoldsItsLinesWholeWithOpeningAndClosing) {
  const auto result = Convert({"M30", "s12 ! Hole", "g01 x1 ! cut", "m02"});
  ASSERT_EQ(result.Subs.size(), 1U);
  EXPECT_EQ(result.Subs.at(12), "S12 ! Hole\r\nG01 X1 ! cut\r\nM02 \r\n");
}

TEST(Walk, ACallOfNoSubroutineIsCriticalAndTheWalkGoesOn) {
  const auto result = Convert({"G98 S77 A0", "G00 X5 Y5", "Q3"});
  EXPECT_THAT(MessagesOf(result),
              ElementsAre("C Subroutine Does Not Exist ", "C Subroutine Does Not Exist "));
  EXPECT_EQ(result.Records.size(), 2U);
}

TEST(Walk, CallsNestSixtyFourDeepAndNoDeeper) {
  const auto program = [](int depth) {
    std::vector<std::string> lines = {"Q1", "M30"};
    for (int i = 1; i <= depth; ++i) {
      lines.push_back("S" + std::to_string(i));
      lines.push_back(i < depth ? "Q" + std::to_string(i + 1) : "G00 X1 Y1");
      lines.push_back("M02");
    }
    return lines;
  };
  EXPECT_THAT(MessagesOf(Convert(program(64))), IsEmpty());
  EXPECT_EQ(Convert(program(64)).Records.size(), 2U);
  EXPECT_THAT(MessagesOf(Convert(program(65))), ElementsAre("C Subroutine Calls Nested Too Deep "));
}

TEST(Walk, ASubroutineThatCallsItselfIsRefused) {
  EXPECT_EQ(Convert({"Q1", "M30", "S1", "Q1", "Q1", "M02"}).CriticalErrors, 1);
}

// ---- jumps ----

TEST(Walk, AJumpSkipsForward) {
  EXPECT_THAT(EndsX({"N10 GOTO 30", "N20 G00 X2 Y0", "N30 G00 X3 Y0"}), ElementsAre(3));
}

TEST(Walk, TheNumberLeftOfGotoIsTheSource) {
  // N10 GOTO 20 goes to 20 and not to itself.
  EXPECT_THAT(EndsX({"N10 GOTO 20", "N10 G00 X1 Y0", "N20 G00 X2 Y0"}), ElementsAre(2));
}

TEST(Walk, ABackwardJumpLoops) {
  EXPECT_THAT(EndsX({"P1=0", "N10 P1=P1+1", "G00 X P1 Y0", "IF P1<3 GOTO 10", "G00 X99"}),
              ElementsAre(1, 2, 3, 99));
}

TEST(Walk, AJumpToNoBlockEndsThePass) {
  const auto result = Convert({"GOTO 99", "G00 X1 Y1"});
  EXPECT_EQ(result.Records.size(), 1U);
  EXPECT_EQ(result.CriticalErrors, 0);
}

TEST(Walk, AJumpStaysInItsFile) {
  EXPECT_THAT(EndsX({"Q1", "N50 G00 X1 Y0", "M30", "S1", "GOTO 50", "G00 X9", "M02"}),
              ElementsAre(1));
}

TEST(Walk, AJumpInASubroutinePassesOverM02) {
  EXPECT_THAT(EndsX({"Q1", "M30", "S1", "GOTO 5", "N5 G00 X9 Y0", "M02"}), ElementsAre(9));
}

TEST(Walk, BlockNumbersOfRecordsFollowAJump) {
  const auto records = RecordsOf({"GOTO 7", "G00 X1", "N7 G00 X2 Y0"});
  ASSERT_EQ(records.size(), 1U);
  EXPECT_EQ(records[0].BlockNumber, 3);
}

TEST(Walk, AJumpWithoutANumberGoesToTheFirstBlockWithoutOne) {
  EXPECT_THAT(EndsX({"N1 P1=P1+1", "N2 IF P1=3 GOTO 9", "G00 X P1 Y0", "GOTO", "N9 M30"}).size(),
              ::testing::Eq(32766U));
}

TEST(Walk, AnEndlessJumpIsCritical) {
  EXPECT_THAT(MessagesOf(Convert({"N1 P1=1", "GOTO 1"})), ElementsAre("C Program Does Not End "));
  EXPECT_THAT(MessagesOf(Convert({"N1 GOTO 1"})), ElementsAre("C Program Does Not End "));
}

TEST(Walk, AWalkWithALowerLimitReadsExactlyAsManyBlocks) {
  const std::map<std::int16_t, std::string> subs;
  Walker walker("N1 G00 X1\r\nGOTO 1\r\n", subs, 5);
  for (int block = 1; block <= 5; ++block) {
    ASSERT_EQ(walker.Next(), WalkStep::Block) << block;
    if (block % 2 == 0) walker.Jump(1);
  }
  EXPECT_EQ(walker.Next(), WalkStep::Endless);
}

TEST(Walk, AJumpNumberBeyondSixteenBitsIsCritical) {
  EXPECT_EQ(Convert({"N70000 G00 X1 Y1", "GOTO 70000"}).CriticalErrors, 1);
}

struct ScanCase {
  const char* Block;
  std::int32_t Number;
};
class BlockNumbers : public ::testing::TestWithParam<ScanCase> {};
TEST_P(BlockNumbers, AreScannedFromTheFirstCharacter) {
  EXPECT_EQ(ScanBlockNumber(GetParam().Block), GetParam().Number);
}
INSTANTIATE_TEST_SUITE_P(Walk, BlockNumbers,
                         ::testing::Values(ScanCase{"N10G01X5", 10}, ScanCase{"N10", 10},
                                           ScanCase{"G01N10", -999}, ScanCase{"/N10G01", -999},
                                           ScanCase{"", -999}, ScanCase{"N", -999},
                                           ScanCase{"5N10", -999}, ScanCase{"N1 0", 10},
                                           ScanCase{"N99999999999", 2147483647}));

// ---- decisions ----

struct IfCase {
  const char* Condition;
  bool Jumps;
};
class Decisions : public ::testing::TestWithParam<IfCase> {};
TEST_P(Decisions, JumpWhenTrue) {
  const std::string block = std::string("IF ") + GetParam().Condition + " GOTO 5";
  const bool jumped = RecordsOf({"P1=2 P2=3", block, "G00 X1 Y1", "N5 M30"}).empty();
  EXPECT_EQ(jumped, GetParam().Jumps);
}
INSTANTIATE_TEST_SUITE_P(
    Walk, Decisions,
    ::testing::Values(IfCase{"P1=2", true}, IfCase{"P1=3", false}, IfCase{"P1<P2", true},
                      IfCase{"P2<P1", false}, IfCase{"P2>P1", true}, IfCase{"P1>P2", false},
                      IfCase{"P1+1=P2", true}, IfCase{"(P1*2)-1=P2", true},
                      IfCase{"=0", true},  // a side without a value counts as 0
                      IfCase{"P9=", true},
                      // two characters long and in no table: false
                      IfCase{"P1<=P2", false}, IfCase{"P2>=P1", false}, IfCase{"P1<>P2", false},
                      IfCase{"P1==2", false}, IfCase{"P1", false}, IfCase{"", false}));

TEST(Walk, AComparisonWithAnExclamationMarkIsCutAsAComment) {
  EXPECT_THAT(EndsX({"P1=2", "IF P1 != 3 GOTO 9", "G00 X1 Y0", "N9 M30"}), ElementsAre(1));
}

TEST(Walk, AnIfWithoutAJumpIsFalseAndEndsItsBlock) {
  EXPECT_THAT(EndsX({"IF P1=0 G00 X5 Y5", "G00 X1 Y0"}), ElementsAre(1));
}

TEST(Walk, ATrueAbortLeaves) {
  EXPECT_THAT(EndsX({"IF P1=0 ABORT", "G00 X1 Y0"}), IsEmpty());
  EXPECT_THAT(EndsX({"IF P1=1 ABORT", "G00 X1 Y0"}), ElementsAre(1));
  EXPECT_THAT(EndsX({"Q1", "G00 X2 Y0", "M30", "S1", "IF P1=0 ABORT", "G00 X1", "M02"}),
              ElementsAre(2));
}

TEST(Walk, AFalseIfDoesNothingElse) {
  EXPECT_THAT(EndsX({"IF P1=1 GOTO 9 G00 X5 Y5", "N9 G00 X1 Y0"}), ElementsAre(1));
}

TEST(Walk, EndifIsAnIfWithoutAJump) {
  EXPECT_THAT(EndsX({"ENDIF G00 X5 Y5", "G00 X1 Y0"}), ElementsAre(1));
}

// ---- parameters and feed ----

TEST(Walk, SeveralAssignmentsMayStandInOneBlock) {
  EXPECT_THAT(EndsX({"P1=5 P2=P1*2 P12=P2+1", "G00 X P12 Y0"}), ElementsAre(11));
}

TEST(Walk, AParameterSetInABlockIsReadInTheSameBlock) {
  EXPECT_THAT(EndsX({"P3=4 G00 X P3 Y0"}), ElementsAre(4));
}

TEST(Walk, AnAssignmentWithoutAValueStoresTheMarker) {
  EXPECT_THAT(EndsX({"P3=4", "P3=", "G00 X P3+1000 Y0"}), ElementsAre(1));
}

TEST(Walk, ParameterHundredCanNotBeSet) {
  EXPECT_THAT(EndsX({"P100=7", "G00 X P10 Y0"}), ElementsAre(0));
}

TEST(Walk, ParametersForTheRestartArePassedOver) {
  EXPECT_EQ(Convert({"P101=7", "P110=3"}).CriticalErrors, 0);
  const auto result = Convert({"F100 P105=7", "G00 X5 Y0"});
  EXPECT_EQ(result.CriticalErrors, 0);
  EXPECT_EQ(result.Records.back().Feed, 100);
}

TEST(Walk, AParameterAboveHundredIsCritical) {
  EXPECT_THAT(MessagesOf(Convert({"G00 XP101 Y10"})),
              ElementsAre("C Parameter Number Out of Range "));
}

TEST(Walk, ParametersThatGrowWithoutEndAreCritical) {
  const auto result = Convert({"P1=10", "N1 P1=P1*P1", "IF P2<9 GOTO 1"});
  EXPECT_GT(result.CriticalErrors, 0);
}

TEST(Walk, ACoordinateOfNoMachineIsCritical) {
  EXPECT_THAT(MessagesOf(Convert({"G00 X" + std::string(300, '9') + " Y0"})),
              ElementsAre("C Number Out of Range "));
}

TEST(Walk, FeedIsKeptAndOnlyAPositiveOneTaken) {
  const auto records = RecordsOf({"G01 X1 F1200", "G01 X2 F0", "G01 X3 F-5", "G01 X4 F P9"});
  for (const auto& record : records) EXPECT_EQ(record.Feed, 1200);
}

TEST(Walk, FeedIsUntouchedByInches) { EXPECT_EQ(RecordsOf({"G70", "G01 X1 F100"})[0].Feed, 100); }

TEST(Walk, SkipLevelsTravelWithTheRecords) {
  const auto records = RecordsOf({"/G01 X1", "//G01 X2", "G01 X3", "G01 X8/2"});
  EXPECT_EQ(records[0].SkipLevel, 1);
  EXPECT_EQ(records[1].SkipLevel, 2);
  EXPECT_EQ(records[2].SkipLevel, 0);
  EXPECT_EQ(records[3].SkipLevel, 1);  // a division
}

// ---- units and header ----

TEST(Walk, InchesFirstScaleTheHeader) {
  const auto result = Convert({"! SHEET : X10 Y5", "! CLAMP : L1 R2", "G70", "G71", "G70"});
  const auto& sheet = result.Records[0];
  EXPECT_FLOAT_EQ(sheet[Figure::SheetX], 254);
  EXPECT_FLOAT_EQ(sheet[Figure::SheetY], 127);
  EXPECT_FLOAT_EQ(sheet[Figure::FirstClamp], 25.4F);
  EXPECT_FLOAT_EQ(sheet[ClampFigure(1)], 50.8F);
  EXPECT_EQ(sheet[Mark::Imperial], -1);
  EXPECT_EQ(result.SheetText, "Sheet Size :  10x5");
}

TEST(Walk, MillimetresFirstSettleTheHeaderForGood) {
  const auto result = Convert({"! SHEET : X10 Y5", "G71", "G70", "G00 X1 Y1"});
  EXPECT_EQ(result.Records[0][Figure::SheetX], 10);
  EXPECT_EQ(result.Records[0][Mark::Imperial], 0);
  EXPECT_FLOAT_EQ(result.Records[1].EndPoint.X, 25.4F);
}

TEST(Walk, TheLastKerfWidthOfG41OrG42StandsInTheHeader) {
  const auto result = Convert({"G41 K0.2", "G42 K0.3", "G41", "G40 K9"});
  EXPECT_EQ(result.Records[0][Figure::KerfWidth], 0.3F);
}

TEST(Walk, CountsStandInTheHeader) {
  EXPECT_EQ(Convert({"G00 X1", "G00 X2", "G04 K1"}).Records[0][Mark::RecordCount], 4);
}

TEST(Walk, MaterialIsCutAtItsField) {
  const auto result = Convert({"! MATERIAL : " + std::string(100, 'M')});
  EXPECT_EQ(TextOf(result.Records[0].Common().Material), std::string(72, 'M'));
}

// ---- the report ----

TEST(Report, HeadErrorsAndEndMark) {
  Conversion conversion;
  conversion.Machine.TravelMaxX = 100;
  const auto result =
      conversion.Run(std::vector<std::string>{"G00 X500 Y0 ! far out", "G02 X600 I1 J0"});
  EXPECT_EQ(result.Report,
            "PROGRAM   :  PLATE\r\n"
            "DIRECTORY :  SHOP\r\n"
            "TIME      :  07/03/26 09:05\r\n"
            "\r\n"
            "****** WARNING ERROR ******\r\n"
            "Out of limits in X\r\n"
            "G00 X500 Y0\r\n"
            "\r\n"
            "****** WARNING ERROR ******\r\n"
            "Out of limits in X\r\n"
            "G02 X600 I1 J0\r\n"
            "\r\n"
            "****** CRITICAL ERROR ******\r\n"
            "Non-Interpolated Arc (Invalid I,J)\r\n"
            "G02 X600 I1 J0\r\n"
            "******\r\n");
  EXPECT_EQ(result.CriticalErrors, 1);
  EXPECT_EQ(result.Errors[2].BlockNumber, 2);
}

// ---- limits of the counts ----

TEST(Walk, MoreRecordsThanTheCountHoldsAreCritical) {
  const auto result = Convert({"N1 P1=P1+1", "G00 X P1-1 Y0", "GOTO 1"});
  EXPECT_EQ(MessagesOf(result).back(), "C Too Many Records in Program ");
  EXPECT_EQ(result.Records.size(), 32767U);
  EXPECT_EQ(result.Records[0][Mark::RecordCount], 32767);
}

TEST(Walk, MoreLinesThanTheCountHoldsAreCritical) {
  std::string program;
  for (int i = 0; i < 32767; ++i) program += "P1=1\r\n";
  EXPECT_EQ(Conversion().Run(program).CriticalErrors, 0);
  program += "P1=1\r\n";
  EXPECT_THAT(MessagesOf(Conversion().Run(program)), ElementsAre("C Too Many Lines in Program "));
}

TEST(Walk, MoreErrorsThanTheCountHoldsEndTheWalk) {
  const auto result = Convert({"N1 G02 X10 I1 R0", "X0", "GOTO 1"});
  EXPECT_EQ(MessagesOf(result).back(), "C Too Many Errors in Program ");
}

TEST(Walk, WarningsAreNotCountedTowardsTooManyErrors) {
  Conversion conversion;
  conversion.Machine.TravelMaxX = 100;
  conversion.Machine.TravelMaxY = 100;
  const auto result = conversion.Run(std::vector<std::string>{
      "P1=0", "N1 X500 Y500", "X600 Y600", "P1=P1+1", "IF P1<9000 GOTO 1", "G00 X1 Y1"});
  EXPECT_EQ(result.CriticalErrors, 0);
  EXPECT_EQ(result.Errors.size(), 36000U);
  EXPECT_EQ(result.Records.size(), 18002U) << "the walk came to the end";
}

TEST(Walk, TheTotalsAreSummedInSingles) {
  // From 16777216 mm on a single holds no odd millimetre: one more does not show in the sum.
  std::vector<std::string> program = {"G00 X16777216 Y0"};
  const float far = Convert(program).Totals.MoveLength;
  for (int i = 1; i <= 8; ++i) program.push_back("G00 Y" + std::to_string(i % 2));
  EXPECT_EQ(far, 16777216.0F);
  EXPECT_EQ(Convert(program).Totals.MoveLength, far);
}

TEST(Report, ABlockIsCutAtTwoHundredCharacters) {
  Conversion conversion;
  conversion.Machine.TravelMaxX = 100;
  const std::string block = "G00 X500 Y0 " + std::string(300, 'L');
  const auto result = conversion.Run(std::vector<std::string>{block});
  EXPECT_NE(result.Report.find("\r\n" + block.substr(0, 200) + "\r\n"), std::string::npos);
  EXPECT_EQ(result.Report.find(block.substr(0, 201)), std::string::npos);
}

TEST(Walk, BlankLinesOfAProgramDoNotCountInItsBlockNumbers) {
  const std::string program =
      "! MATERIAL : STEEL\r\n\r\n\r\nG00 X1 Y1\r\n   \r\n\r\nG00 X2\r\n\r\nM30\r\n";
  Conversion conversion;
  const auto result = conversion.Run(SqueezeProgram(program));
  ASSERT_EQ(result.Records.size(), 3U);
  EXPECT_EQ(result.Records[1].BlockNumber, 2);
  EXPECT_EQ(result.Records[2].BlockNumber, 3);
}

TEST(Walk, ABlockOfUnreasonableLengthIsCritical) {
  EXPECT_THAT(MessagesOf(Convert({"G00 X1" + std::string(2000, '0') + " Y0", "G00 X1 Y1"})),
              ElementsAre("C Block Too Long "));
}

}  // namespace
