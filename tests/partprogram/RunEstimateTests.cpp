// What a run takes: which rows take what, where a contour begins and ends, what the figures of a
// machine change.
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "Conversion.h"
#include "partprogram/RunEstimate.h"

namespace torvane::partprogram {
namespace {

using core::RunFigures;

/// The passes over blocks, and the estimate of what they made.
RunEstimate EstimateOf(const std::vector<std::string>& blocks, const RunFigures& figures = {},
                       const RunSwitches& switches = {}) {
  core::MachineData machine = tests::LargeMachine();
  machine.BlendAngle = 15;
  const core::Station station{1, 1, "Laser 1", 3, 0, 0, 0, 0};
  const PassInput input{"PLATE", "SHOP", 1, &machine, &station, {}};
  const auto passes = RunPasses(SqueezeProgram(tests::Join(blocks)), input);
  EXPECT_EQ(passes.Outcome, PassOutcome::Good) << passes.Conversion.Report;
  return EstimateRun({passes.Table.Text, passes.Kerf}, figures, switches);
}

/// By the rows alone.
RunEstimate EstimateOfRows(const std::string& text) { return EstimateRun({text, {}}, {}, {}); }

const std::vector<std::string> TwoContours = {"! SHEET : X500 Y300",
                                              "G71 G90",
                                              "G00 X100 Y0",
                                              "G31 T2=3",
                                              "G01 X100 Y60 F3600",
                                              "G01 X160 Y60",
                                              "G31 T2=1",
                                              "G00 X200 Y60",
                                              "G31 T2=3",
                                              "G01 X230 Y60",
                                              "G31 T2=1",
                                              "M30"};

TEST(RunEstimate, CutsAtTheFeedAndMovesAtTheRapidRate) {
  const auto run = EstimateOf(TwoContours);
  EXPECT_NEAR(run.CutSeconds, 150.0 / 60, 1e-9);
  EXPECT_NEAR(run.MoveSeconds, 140.0 / 500, 1e-9);
  EXPECT_NEAR(run.CutLength, 150, 1e-6);
  EXPECT_NEAR(run.MoveLength, 140, 1e-6);
  EXPECT_EQ(run.BrokenLine, 0);
}

TEST(RunEstimate, AContourIsCutFromBeamOnToBeamOff) {
  const auto run = EstimateOf(TwoContours);
  ASSERT_EQ(run.Contours.size(), 2U);
  EXPECT_NEAR(run.Contours[0].Length, 120, 1e-6);
  EXPECT_NEAR(run.Contours[0].Seconds, 2, 1e-9);
  EXPECT_EQ(run.Contours[0].Block, 5) << "line of the program, the header counted";
  EXPECT_NEAR(run.Contours[1].Length, 30, 1e-6);
}

TEST(RunEstimate, TheBeamOffAndOnAtOnePlaceIsTwoContours) {
  const auto run = EstimateOf({"! SHEET : X500 Y300", "G71 G90", "G31 T2=3", "G01 X60 Y0 F3600",
                               "G31 T2=1", "G31 T2=3", "G01 X60 Y60", "G31 T2=1", "M30"});
  EXPECT_EQ(run.Contours.size(), 2U);
}

TEST(RunEstimate, OtherSettingsInAContourDoNotPartIt) {
  const auto run = EstimateOf({"! SHEET : X500 Y300", "G71 G90", "G31 T2=3", "G01 X60 Y0 F3600",
                               "G31 T1=900", "G30 T1=5", "G01 X60 Y60", "G31 T2=1", "M30"});
  EXPECT_EQ(run.Contours.size(), 1U);
}

TEST(RunEstimate, DwellsCountInTheContourTheyAreIn) {
  const auto run =
      EstimateOf({"! SHEET : X500 Y300", "G71 G90", "G04 K5", "G31 T2=3", "G04 K0.5",
                  "G01 X60 Y0 F3600", "G04 K0.25", "G01 X60 Y60", "G31 T2=1", "G04 K7", "M30"});
  ASSERT_EQ(run.Contours.size(), 1U);
  EXPECT_NEAR(run.Contours[0].Seconds, 2.75, 1e-9);
  EXPECT_NEAR(run.DwellSeconds, 12.75, 1e-9);
}

TEST(RunEstimate, AnArcWithoutTheBeamTakesItsFeedButIsNoContour) {
  const auto run = EstimateOf(
      {"! SHEET : X500 Y300", "G71 G90", "G00 X100 Y100", "G03 X100 Y100 I-10 J0 F600", "M30"});
  EXPECT_TRUE(run.Contours.empty());
  EXPECT_NEAR(run.CutSeconds, 62.831853 / 10, 1e-4);
}

TEST(RunEstimate, AFeedThatWasNeverGivenIsTheMachinesOwn) {
  RunFigures figures;
  figures.DefaultFeed = 600;
  const auto run =
      EstimateOf({"! SHEET : X500 Y300", "G71 G90", "G31 T2=3", "G01 X60 Y0", "M30"}, figures);
  EXPECT_NEAR(run.CutSeconds, 6, 1e-9);
}

TEST(RunEstimate, TheOverrideChangesCutsAlone) {
  RunSwitches half;
  half.OverridePercent = 50;
  const auto whole = EstimateOf(TwoContours);
  const auto slow = EstimateOf(TwoContours, {}, half);
  EXPECT_NEAR(slow.CutSeconds, 2 * whole.CutSeconds, 1e-9);
  EXPECT_NEAR(slow.MoveSeconds, whole.MoveSeconds, 1e-9);
}

TEST(RunEstimate, SkippedRowsAreNotRunAndTheWayOverThemIsMoved) {
  const std::vector<std::string> blocks = {"! SHEET : X500 Y300", "G71 G90",      "G31 T2=3",
                                           "G01 X60 Y0 F3600",    "/G01 X60 Y60", "//G01 X120 Y60",
                                           "G01 X180 Y60",        "G31 T2=1",     "M30"};
  RunSwitches first;
  first.Skip1 = true;
  const auto all = EstimateOf(blocks);
  const auto run = EstimateOf(blocks, {}, first);
  EXPECT_EQ(all.Skipped, 0);
  EXPECT_EQ(run.Skipped, 1);
  EXPECT_NEAR(run.CutLength, all.CutLength - 60, 1e-6);
  EXPECT_NEAR(run.MoveLength, all.MoveLength + 60, 1e-6);
  EXPECT_NEAR(run.Contours.at(0).Seconds, 3 + 60.0 / 500, 1e-9);
}

TEST(RunEstimate, ClampsRepositionsAndTurnsTakeTheMachinesTimes) {
  RunFigures figures;
  figures.ClampSeconds = 2;
  figures.RepositionSeconds = 10;
  const auto run = EstimateOf(
      {"! SHEET : X500 Y300", "G71 G90", "M87", "M99", "G95 I100 J2 K2", "M55 I1 J0", "G53", "M30"},
      figures);
  EXPECT_NEAR(run.MachineSeconds, 24, 1e-9) << "cancelled offsets take nothing";
}

TEST(RunEstimate, AProgramStopIsCountedAndTakesNoTime) {
  const auto run = EstimateOf({"! SHEET : X500 Y300", "G71 G90", "M00", "M00", "M30"});
  EXPECT_EQ(run.Stops, 2);
  EXPECT_EQ(run.Seconds(), 0);
}

TEST(RunEstimate, EachContourIsPiercedOnce) {
  RunFigures figures;
  figures.PierceSeconds = 0.5;
  const auto plain = EstimateOf(TwoContours);
  const auto run = EstimateOf(TwoContours, figures);
  EXPECT_NEAR(run.Seconds(), plain.Seconds() + 1, 1e-9);
  EXPECT_NEAR(run.Contours[1].Seconds, plain.Contours[1].Seconds + 0.5, 1e-9);
}

TEST(RunEstimate, TheHeadComesFromWhereItStands) {
  RunFigures figures;
  figures.StartX = 100;
  EXPECT_NEAR(EstimateOf(TwoContours, figures).MoveLength, 40, 1e-6);
}

TEST(RunEstimate, BlendedElementsAreOneMotionAndCornersAreStops) {
  RunFigures figures;
  figures.CutAcceleration = 1000;
  const auto seconds = [&](const std::string& first, const std::string& second) {
    return EstimateOf({"! SHEET : X500 Y300", "G71 G90", "G31 T2=3", first + " F3600", second,
                       "G31 T2=1", "M30"},
                      figures)
        .CutSeconds;
  };
  const double ramp = 60.0 / 1000;
  EXPECT_NEAR(seconds("G01 X60 Y0", "G01 X120 Y0"), 2 + ramp, 1e-9);
  EXPECT_NEAR(seconds("G01 X60 Y0", "G01 X60 Y60"), 2 + 2 * ramp, 1e-9);
}

TEST(RunEstimate, MovesSpeedUpAndBrake) {
  RunFigures figures;
  figures.RapidAcceleration = 10000;
  const auto run = EstimateOf({"! SHEET : X500 Y300", "G71 G90", "G00 X100 Y0", "M30"}, figures);
  EXPECT_NEAR(run.MoveSeconds, 100.0 / 500 + 500.0 / 10000, 1e-9);
}

TEST(RunEstimate, ASubroutinesContourNamesItsLine) {
  const auto run = EstimateOf({"! SHEET : X500 Y300", "G71 G90", "G98 S1 A0", "M30", "", "S1",
                               "G31 T2=3", "G01 X60 Y0 F3600", "G31 T2=1", "M02"});
  ASSERT_EQ(run.Contours.size(), 1U);
  EXPECT_EQ(run.Contours[0].Block, 3);
  EXPECT_GT(run.Contours[0].SubBlock, 0);
}

TEST(RunEstimate, TheLongestContoursComeFirstAndEqualsInTheirOrder) {
  RunEstimate run;
  for (const double seconds : {3.0, 7.0, 3.0, 9.0}) {
    Contour contour;
    contour.Block = static_cast<std::int16_t>(run.Contours.size());
    contour.Seconds = seconds;
    run.Contours.push_back(contour);
  }
  const auto three = LongestContours(run, 3);
  ASSERT_EQ(three.size(), 3U);
  EXPECT_EQ(three[0].Block, 3);
  EXPECT_EQ(three[1].Block, 1);
  EXPECT_EQ(three[2].Block, 0);
  EXPECT_EQ(LongestContours(run, 10).size(), 4U);
  EXPECT_TRUE(LongestContours(run, 0).empty());
}

TEST(RunEstimate, ATableThatIsNoneOrBreaksOffCountsUpToThere) {
  EXPECT_EQ(EstimateOfRows("").BrokenLine, 1);
  EXPECT_EQ(EstimateOfRows("TABLE(500,-999)\r\n").BrokenLine, 0);
  const auto run = EstimateOfRows("TABLE(500,0,500,0,0,0,0,0)\r\nVR(1)=5\r\nTABLE(514,-999)\r\n");
  EXPECT_EQ(run.BrokenLine, 2);
  EXPECT_NEAR(run.MoveSeconds, 1, 1e-9);
  EXPECT_EQ(EstimateOfRows("TABLE(500,5,1,2,3,4,5,6)\r\nTABLE(507,-999)\r\n").BrokenLine, 2)
      << "settings without their second half";
}

TEST(RunEstimate, RowsAfterTheEndDoNotCount) {
  const auto run = EstimateOfRows("TABLE(500,-999)\r\nTABLE(501,0,500,0,0,0,0,0)\r\n");
  EXPECT_EQ(run.Seconds(), 0);
}

TEST(RunEstimate, ADwellTooShortForItsRowIsAMoveToItsPointAndLosesNoRecord) {
  const std::vector<std::string> square = {
      "! SHEET : X500 Y300", "G71 G90",     "G00 X100 Y0", "G31 T2=3", "G01 X100 Y60 F3600",
      "G01 X160 Y60",        "G01 X160 Y0", "G31 T2=1",    "M30"};
  auto dwelling = square;
  dwelling.insert(dwelling.begin() + 4, "G04 K0.004");
  const auto plain = EstimateOf(square);
  const auto run = EstimateOf(dwelling);
  ASSERT_EQ(run.Contours.size(), 1U);
  EXPECT_EQ(run.Contours[0].Block, plain.Contours.at(0).Block + 1);
  EXPECT_GT(run.Contours[0].Record, 0);
  EXPECT_NEAR(run.CutLength, plain.CutLength, 1e-6);
  EXPECT_EQ(run.DwellSeconds, 0);
}

TEST(RunEstimate, RecordsThatDoNotFitTheirRowsAreLeft) {
  const std::string text =
      "TABLE(500,0,500,0,0,0,0,0)\r\nTABLE(507,1,560,0,0,0,3600,0)\r\nTABLE(514,-999)\r\n";
  DrawRecord header;
  header.Code = RecordCode::Sheet;
  DrawRecord other;
  other.Code = RecordCode::Move;
  other.TableLine = 1;
  other.EndPoint = {9000, 9000, 0};
  const auto run = EstimateRun({text, std::vector<DrawRecord>{header, other}}, {}, {});
  EXPECT_NEAR(run.MoveLength, 500, 1e-9);
  EXPECT_NEAR(run.CutSeconds, 1, 1e-9);
  EXPECT_EQ(run.Contours.at(0).Record, 0);
}

}  // namespace
}  // namespace torvane::partprogram
