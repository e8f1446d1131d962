// The state at a block, word by word.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "restart/Gathering.h"

namespace torvane::restart {

using namespace tests;
namespace {

using testing::HasSubstr;

TEST(GatherWalk, BlockOneIsTheLoadPositionWithEverythingOff) {
  Gathering gathering;
  const GatherResult result = gathering.To({"N1 G00 X10 Y20", "G01 X30"}, 1);
  EXPECT_TRUE(result.Met);
  GatherState expected;
  expected.Gathered = GatherMark::Reached;
  expected.BlockNo = 1;
  expected.XPosition = 2500;
  expected.YPosition = 1250;
  EXPECT_EQ(result.State, expected);
}

TEST(GatherWalk, TheTargetItselfIsNotCarriedOut) {
  Gathering gathering;
  const GatherState state = gathering.To({"G00 X10 Y20", "G01 X30 Y40 M04"}, 2).State;
  EXPECT_EQ(state.XPosition, 10);
  EXPECT_EQ(state.YPosition, 20);
  EXPECT_FALSE(state.ProfilerOn);
}

TEST(GatherWalk, ABlockThatIsNeverReachedReadsAsGatheredAtTheEnd) {
  Gathering gathering;
  const GatherResult result = gathering.To({"G00 X10 Y20", "G91"}, 17);
  EXPECT_FALSE(result.Met);
  EXPECT_EQ(result.State.Gathered, GatherMark::Reached);
  EXPECT_EQ(result.State.XPosition, 10);
  EXPECT_TRUE(result.State.Incremental);
}

TEST(GatherWalk, TheLastWordOfCoordinatesCounts) {
  EXPECT_FALSE(Gathering().After({"G91", "G90"}).Incremental);
  EXPECT_TRUE(Gathering().After({"G90", "G91"}).Incremental);
  EXPECT_TRUE(Gathering().After({"G91 G90"}).Incremental) << "G90 is tested first";
}

TEST(GatherWalk, UnitsCountWheneverTheyAreInForce) {
  const GatherState state = Gathering().After({"G71", "G00 X1", "G70", "G00 X2 Y1"});
  EXPECT_TRUE(state.Imperial);
  EXPECT_FLOAT_EQ(state.XPosition, 50.8F);
  EXPECT_FLOAT_EQ(state.YPosition, 25.4F);
}

TEST(GatherWalk, TheBeamIsM03ToM06AndNeverG31) {
  EXPECT_TRUE(Gathering().After({"M04"}).ProfilerOn);
  EXPECT_TRUE(Gathering().After({"M03"}).ProfilerOn);
  EXPECT_FALSE(Gathering().After({"M04", "M05"}).ProfilerOn);
  EXPECT_FALSE(Gathering().After({"M03", "M06"}).ProfilerOn);
  EXPECT_FALSE(Gathering().After({"G31 T2=3"}).ProfilerOn);
  EXPECT_TRUE(Gathering().After({"M04", "G31 T2=1"}).ProfilerOn);
  EXPECT_FALSE(Gathering().After({"M03 M05"}).ProfilerOn);
}

TEST(GatherWalk, OffsetsOfG56AddUp) {
  const GatherState state = Gathering().After({"G56 X10 Y20", "G56 X5", "G00 X1 Y1"});
  EXPECT_EQ(state.G56OffsetX, 15);
  EXPECT_EQ(state.G56OffsetY, 20);
  EXPECT_EQ(state.XPosition, 16);
  EXPECT_EQ(state.YPosition, 21);
}

TEST(GatherWalk, OffsetsTakeTheSignOfTheMirrorAndInches) {
  const GatherState g56 = Gathering().After({"M11", "G70", "G56 X1 Y2"});
  EXPECT_FLOAT_EQ(g56.G56OffsetX, -25.4F);
  EXPECT_FLOAT_EQ(g56.G56OffsetY, 50.8F);
  const GatherState g92 = Gathering().After({"M12", "G70", "G92 X1 Y2"});
  EXPECT_FLOAT_EQ(g92.G92OffsetX, 25.4F);
  EXPECT_FLOAT_EQ(g92.G92OffsetY, -50.8F);
}

TEST(GatherWalk, G92SetsTheWorkOffsetAndAddsItsOwnWords) {
  const GatherState state = Gathering().After({"G00 X100 Y100", "G92 X10", "G92 X10", "G00 X0"});
  EXPECT_EQ(state.G92OffsetX, 20);
  EXPECT_EQ(state.XPosition, 90);
}

TEST(GatherWalk, G53ClearsG56ButNotG92) {
  const GatherState state =
      Gathering().After({"G00 X100 Y100", "G56 X10", "G92 X10 Y5", "G53", "G00 X1"});
  EXPECT_EQ(state.G56OffsetX, 0);
  EXPECT_EQ(state.G92OffsetX, 10);
  EXPECT_EQ(state.G92OffsetY, 5);
  EXPECT_EQ(state.XPosition, 1);
}

TEST(GatherWalk, MirrorsAddUpUntilM10) {
  EXPECT_EQ(Gathering().After({"M11"}).MirrorCode, 1);
  EXPECT_EQ(Gathering().After({"M12"}).MirrorCode, 2);
  EXPECT_EQ(Gathering().After({"M13"}).MirrorCode, 3);
  EXPECT_EQ(Gathering().After({"M11", "M12"}).MirrorCode, 3);
  EXPECT_EQ(Gathering().After({"M13", "M10"}).MirrorCode, 0);
}

TEST(GatherWalk, TheSideOfTheKerfIsKept) {
  EXPECT_EQ(Gathering().After({"G41 K0.2"}).KerfSide, 1);
  EXPECT_EQ(Gathering().After({"G42"}).KerfSide, 2);
  EXPECT_EQ(Gathering().After({"G42", "G40"}).KerfSide, 0);
}

TEST(GatherWalk, ParametersOfTheControllerAreKept) {
  const GatherState state =
      Gathering().After({"P1=4", "P105=P1+1 F100 P110=-2.5", "P104=P9 P103=", "P111=3"});
  EXPECT_EQ(state.ParameterValues[4], 5);
  EXPECT_EQ(state.ParameterValues[9], -2.5F);
  EXPECT_EQ(state.ParameterValues[3], 0) << "P9 was never set and holds 0";
  for (const std::size_t i : {0, 1, 2, 5, 6, 7, 8, 10, 24}) {
    EXPECT_EQ(state.ParameterValues[i], -999) << i;
  }
}

TEST(GatherWalk, P101InAnExpressionReadsP10AndADigit) {
  EXPECT_FLOAT_EQ(Gathering().After({"P10=3", "G00 XP101 Y0"}).XPosition, 3.0001F * 1.0F);
}

TEST(GatherWalk, AValueEndsAtAParameterOfTheController) {
  const GatherState state = Gathering().After({"G00 X10 P101=5 Y20"});
  EXPECT_EQ(state.XPosition, 10);
  EXPECT_EQ(state.ParameterValues[0], 5);
}

TEST(GatherWalk, M50GoesToTheLoadPositionWhateverItsY) {
  const GatherState state = Gathering().After({"G00 X1 Y2", "M50 Y77"});
  EXPECT_EQ(state.XPosition, 2500);
  EXPECT_EQ(state.YPosition, 1250);
}

TEST(GatherWalk, TheWalkRunsOnAfterM30IntoTheDefinitions) {
  const GatherState state =
      Gathering().After({"G00 X1 Y2", "M30", "S5", "G00 X9 M04", "M02", "G42"});
  EXPECT_EQ(state.XPosition, 9);
  EXPECT_TRUE(state.ProfilerOn);
  EXPECT_EQ(state.KerfSide, 2);
}

TEST(GatherWalk, GotoAbortAndQArePassedOver) {
  const GatherState state =
      Gathering().After({"G00 X1 Y1", "GOTO 50", "G00 X2", "ABORT", "G00 X3", "Q7 X4", "N50 G91"});
  EXPECT_EQ(state.XPosition, 4);
  EXPECT_TRUE(state.Incremental);
}

TEST(GatherWalk, G28AndG37DoNothing) {
  EXPECT_EQ(Gathering().After({"G00 X1 Y1", "G28", "G37"}).XPosition, 1);
}

TEST(GatherWalk, ModalMotionIsThatOfTheConversion) {
  // A modal line rounds to 4 places, a G56 block moves nothing, an M50 goes back to rapid.
  EXPECT_EQ(Gathering().After({"G01 X1", "X1.00004"}).XPosition, 1);
  EXPECT_EQ(Gathering().After({"G01 X1", "G04 K5 X7"}).XPosition, 1);
}

TEST(GatherWalk, SkipBlocksAreWalkedWhateverTheSwitchesSay) {
  EXPECT_EQ(Gathering().After({"/G00 X1 Y1", "//G00 X2"}).XPosition, 2);
}

// ---- jumps ----

TEST(GatherWalk, ATrueIfJumpsAndAFalseOneGoesOnAndAssigns) {
  EXPECT_EQ(Gathering().After({"P1=1", "IF P1=1 GOTO 9", "G00 X5 Y5", "N9 G91"}).XPosition, 2500);
  // The comparison reads as an assignment where it does not hold: P1 becomes 5.
  const GatherState state = Gathering().After({"P1=1", "IF P1=5 GOTO 9", "G00 XP1 Y5", "N9 G91"});
  EXPECT_EQ(state.XPosition, 5);
}

TEST(GatherWalk, ATargetInALoopIsMetOnItsFirstLap) {
  const std::vector<std::string> loop = {"P1=0",    "G00 X0 Y0",      "N5 G91 G00 X10",
                                         "P1=P1+1", "IF P1<3 GOTO 5", "G90"};
  EXPECT_EQ(Gathering().To(loop, 4).State.XPosition, 10);
  EXPECT_EQ(Gathering().To(loop, 6).State.XPosition, 30);
}

TEST(GatherWalk, BlocksThatASearchPassesOverAreNoTargets) {
  const GatherResult result =
      Gathering().To({"G00 X1 Y1", "IF 1=1 GOTO 9", "G00 X2", "N9 G00 X3"}, 3);
  EXPECT_FALSE(result.Met);
  EXPECT_EQ(result.State.XPosition, 3);
}

TEST(GatherWalk, AJumpToNowhereEndsTheWalk) {
  const GatherResult result = Gathering().To({"G00 X1 Y1", "IF 1=1 GOTO 9", "G00 X2"}, 3);
  EXPECT_FALSE(result.Met);
  EXPECT_EQ(result.State.XPosition, 1);
}

TEST(GatherWalk, AnAbortThatHoldsInTheMainFileEndsTheWalk) {
  EXPECT_EQ(Gathering().After({"G00 X1 Y1", "IF 1=1 ABORT", "G00 X2"}).XPosition, 1);
  EXPECT_EQ(Gathering().After({"G00 X1 Y1", "IF 1=2 ABORT", "G00 X2"}).XPosition, 2);
}

// ---- subroutines ----

TEST(GatherWalk, ACallMovesItsOriginInTheFrameOfItsCaller) {
  const GatherState state =
      Gathering().After({"G00 X100 Y100", "G98 S5 A90 X200", "M30", "S5", "G00 X10", "M02"});
  // Past M30 the definition runs once more as plain blocks.
  EXPECT_EQ(state.XPosition, 10);
  Gathering gathering;
  const GatherResult inside =
      gathering.To({"G00 X100 Y100", "G98 S5 A90 X200", "G91", "S5", "G00 X10", "M02"}, 3);
  EXPECT_NEAR(inside.State.XPosition, 200, 1e-4);
  EXPECT_NEAR(inside.State.YPosition, 110, 1e-4);
}

TEST(GatherWalk, ACallerEndsWithItsCall) {
  Gathering gathering;
  gathering.Subs[5] = "G00 X1\r\n";
  const GatherResult result = gathering.To({"G00 X0 Y0", "G98 S5 A0 M04 G42", "G91"}, 3);
  EXPECT_FALSE(result.State.ProfilerOn);
  EXPECT_EQ(result.State.KerfSide, 0);
}

TEST(GatherWalk, ATargetInASubroutineNeedsBothCounts) {
  const std::vector<std::string> program = {"G00 X0 Y0", "G98 S5 A0", "G98 S5 A0 X100", "M30",
                                            "S5",        "G00 X10",   "G00 X20",        "M02"};
  const GatherResult first = Gathering().To(program, 2, 3);
  EXPECT_TRUE(first.Met);
  EXPECT_EQ(first.State.XPosition, 10);
  const GatherResult second = Gathering().To(program, 3, 3);
  EXPECT_TRUE(second.Met);
  EXPECT_EQ(second.State.XPosition, 110);
  EXPECT_FALSE(Gathering().To(program, 1, 3).Met);
}

TEST(GatherWalk, ARepeatedSubroutineIsMetOnItsFirstRound) {
  Gathering gathering;
  gathering.Subs[5] = "G91 G00 X10\r\nG00 Y1\r\n";
  const std::vector<std::string> program = {"G00 X0 Y0", "G68 S5 Q3 A0", "G90"};
  EXPECT_EQ(gathering.To(program, 2, 2).State.XPosition, 10);
  EXPECT_EQ(gathering.To(program, 3).State.XPosition, 30);
  EXPECT_EQ(gathering.To({"G00 X0 Y0", "G69 S5 A0", "G90"}, 3).State.XPosition, 10)
      << "once without Q";
}

TEST(GatherWalk, ReturnClosesARoundButNotWhileASearchPassesIt) {
  Gathering gathering;
  gathering.Subs[5] = "G00 X1\r\nRETURN\r\nG00 X2\r\n";
  EXPECT_EQ(gathering.To({"G00 X0 Y0", "G98 S5 A0", "G90"}, 3).State.XPosition, 1);
  gathering.Subs[6] = "G00 X1\r\nIF 1=1 GOTO 9\r\nRETURN\r\nN9 G00 X2\r\n";
  EXPECT_EQ(gathering.To({"G00 X0 Y0", "G98 S6 A0", "G90"}, 3).State.XPosition, 2);
}

TEST(GatherWalk, TheFileOfAllBodiesGoesBeforeTheSubroutineFiles) {
  Gathering gathering;
  gathering.Subs[5] = "G00 X1\r\n";
  gathering.Together = "N4000 G00 X4\r\nRETURN\r\nN5000 G91 G00 X7\r\nRETURN\r\n";
  EXPECT_EQ(gathering.To({"G00 X0 Y0", "G98 S5 A0", "G90"}, 3).State.XPosition, 7);
  EXPECT_EQ(gathering.To({"G00 X0 Y0", "G68 S5 Q2 A0", "G90"}, 3).State.XPosition, 14);
  EXPECT_TRUE(gathering.To({"G00 X0 Y0", "G98 S5 A0", "G90"}, 2, 3).Met) << "lines of that file";
}

TEST(GatherWalk, ACallWithoutABodyNamesItsFile) {
  Gathering gathering;
  try {
    (void)gathering.To({"G98 S77 A0", "G90"}, 2);
    FAIL();
  } catch (const platform::RuntimeFault& fault) {
    EXPECT_THAT(std::string(fault.what()), HasSubstr("77.sub"));
  }
}

TEST(GatherWalk, CallsWithoutEndEndTheWalkWithAnEntry) {
  Gathering gathering;
  gathering.Subs[5] = "G68 S5\r\n";
  const GatherResult result = gathering.To({"G98 S5 A0", "G00 X1 Y1"}, 2);
  EXPECT_FALSE(result.Met);
  EXPECT_THAT(result.Faults, HasSubstr("Subroutine Calls Nested Too Deep"));
  gathering.Subs[6] = "";
  const GatherResult rounds =
      gathering.To({"N1 P1=0", "G69 S6 Q32767 A0", "IF 1=1 GOTO 1", "G90"}, 4);
  EXPECT_FALSE(rounds.Met);
  EXPECT_THAT(rounds.Faults, HasSubstr("Program Does Not End"));
}

// ---- faults ----

TEST(GatherWalk, BadArcsAndLimitsAreWrittenDownAndTheWalkGoesOn) {
  const GatherResult result = Gathering().To(
      {"G00 X0 Y0", "G02 X10 Y0 I3 ! bad", "G02 X90 Y0 R1", "G00 X20000 Y5", "G91"}, 5);
  EXPECT_TRUE(result.Met);
  EXPECT_EQ(result.State.XPosition, 20000);
  EXPECT_EQ(result.Faults,
            "\r\n****** CRITICAL ERROR ******\r\nG02 X10 Y0 I3\r\n"
            "Non-Interpolated Arc (Invalid I,J)\r\n"
            "\r\n****** CRITICAL ERROR ******\r\nG02 X90 Y0 R1\r\n"
            "Non-Interpolated Arc (Invalid R)\r\n"
            "\r\n****** WARNING ERROR ******\r\nG00 X20000 Y5\r\nOut of limits in X\r\n")
      << "the block stands in front of the message";
}

TEST(GatherWalk, ARepositionMovesNoLimits) {
  const GatherResult result = Gathering().To({"G95 I500", "G00 X10400 Y0", "G91"}, 3);
  EXPECT_THAT(result.Faults, HasSubstr("Out of limits in X"));
}

TEST(GatherWalk, ABlockWithAValueThatCannotBeReadKeepsNoParameters) {
  EXPECT_EQ(Gathering().After({"P101=2", "G00 X1E P101=3*9999999999"}).ParameterValues[0], 2);
}

// ---- the number of the target ----

TEST(GatherBlockNumber, IsFoundBySearchOfTheText) {
  EXPECT_EQ(BlockNumberOf("N123 G01 X5"), 123);
  EXPECT_EQ(BlockNumberOf("n 1 2 3 G01"), 123);
  EXPECT_EQ(BlockNumberOf("M00 (TURN 12)"), 12);
  EXPECT_EQ(BlockNumberOf("G01 X5"), 0);
  EXPECT_EQ(BlockNumberOf("G01 X5 ! N7"), 0);
  EXPECT_EQ(BlockNumberOf("N40000 G01"), 0);
  EXPECT_EQ(BlockNumberOf("N-5"), 0);
  EXPECT_EQ(BlockNumberOf("N"), 0);
  EXPECT_EQ(BlockNumberOf(""), 0);
}

}  // namespace
}  // namespace torvane::restart
