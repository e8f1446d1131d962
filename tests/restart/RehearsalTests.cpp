// A restart on paper.
#include <cmath>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "partprogram/FixedLines.h"
#include "partprogram/Pipeline.h"
#include "restart/Rehearsal.h"
#include "restart/RestartWords.h"
#include "restart/SlotProgram.h"
#include "restart/SplitPoint.h"

namespace torvane::restart {
namespace {

using partprogram::DrawRecord;
using testing::Contains;
using testing::ElementsAre;
using testing::Not;

/// A program through all passes, ready to be rehearsed.
struct Paper {
  core::MachineData Machine;
  core::Station Station;
  partprogram::PassResult Passes;
  std::vector<std::string> Listing;

  explicit Paper(const std::vector<std::string>& lines) {
    Machine.YDirection = 1;
    Machine.LoadPositionX = 2500;
    Machine.TravelMaxX = Machine.TravelMaxY = 3000;
    std::string text;
    for (const std::string& line : lines) text += line + "\r\n";
    Passes = partprogram::RunPasses(text, {"PLATE", "SHOP", 1, &Machine, &Station, {}});
    EXPECT_EQ(Passes.Outcome, partprogram::PassOutcome::Good);
    Listing = ListingLines(partprogram::MakeFixedLines(Passes.Text.Body, true).Bytes);
  }
  [[nodiscard]] RecordPair Records() const { return {Passes.Conversion.Records, Passes.Kerf}; }
  [[nodiscard]] Rehearser Rehearse() const {
    GatherBodies bodies;
    bodies.ReadSub = [this](std::int16_t number) { return Passes.Conversion.Subs.at(number); };
    return Rehearser(
        {Passes.Text.Converted, bodies, Records(), Listing, "PLATE", "SHOP", 1, 9, &Machine, {}});
  }
};

const std::vector<std::string> Plate = {
    "G31 T2=3 1=5",    "G56 X25 Y30", "G42 K0.4 M04",           "G00 X75 Y70",
    "N7 G01 X675 Y70", "N8 G01 Y270", "N9 G03 X475 Y270 I-100", "N10 G01 Y70",
    "G95 I100",        "G40 M05"};

TEST(Rehearsal, OfABlockTellsWhatTheControllerGets) {
  const Paper paper(Plate);
  const Rehearsal at = paper.Rehearse().AtBlock(6, 0);
  EXPECT_TRUE(at.Met);
  EXPECT_EQ(at.Text, "N8 G01 Y270");
  EXPECT_EQ(at.State.BlockNo, 8);
  EXPECT_EQ(at.State.XPosition, 700);
  EXPECT_EQ(at.State.YPosition, 100);
  EXPECT_EQ(at.State.G56OffsetX, 25);
  EXPECT_EQ(at.NextState.BlockNo, 9);
  EXPECT_EQ(at.NextState.YPosition, 300);
  EXPECT_THAT(at.Lines.Now, ElementsAre("TABLE (9,-999)", "VR(91)=3"));
  EXPECT_THAT(at.Lines.AtStart, ElementsAre("VR(91)=1", "B1.00008R"));
  ASSERT_TRUE(at.Entry);
  EXPECT_EQ(at.Entry->Code, partprogram::RecordCode::LineProfile);
  EXPECT_EQ(at.Entry->Programmed.X, 700);
  EXPECT_NE(at.GatherText.find("X Position   :  700 "), std::string::npos);
  EXPECT_THAT(at.Warnings, Contains("sheet repositioned after the point"));
  EXPECT_THAT(at.Warnings, Contains("settings before the point not gathered"));
  EXPECT_THAT(at.Warnings, Not(Contains("no N on the block")));
}

TEST(Rehearsal, OfASplitEntersOnTheCompensatedElement) {
  const Paper paper(Plate);
  const Rehearser rehearser = paper.Rehearse();
  const auto& draw = paper.Passes.Conversion.Records;
  std::int16_t line = 0;
  for (std::size_t i = 1; i < draw.size(); ++i) {
    if (draw[i].BlockNumber == 5) line = static_cast<std::int16_t>(i + 1);
  }
  const Rehearsal at = rehearser.AtRecord(line, 580);
  EXPECT_TRUE(at.Visual);
  EXPECT_EQ(at.Block, 5);
  EXPECT_EQ(at.State.BlockNo, 8) << "the block after the element";
  EXPECT_FLOAT_EQ(at.State.XPosition, 120);
  EXPECT_EQ(at.State.YPosition, 100);
  ASSERT_TRUE(at.Split && at.Entry);
  EXPECT_EQ(at.Split->Step, 20);
  EXPECT_EQ(at.Split->Remaining, 580);
  EXPECT_EQ(at.Entry->Record, at.Split->Record);
  EXPECT_NEAR(at.Entry->Compensated.X, 120, 1e-3);
  EXPECT_NEAR(at.Entry->Compensated.Y, 100 - 0.4, 0.41) << "beside the programmed line";
  EXPECT_THAT(at.Lines.File, Contains("G01 X700.00 Y100.00"));
  EXPECT_EQ(rehearser.CutRecord(at.Entry->Record), line);
}

TEST(Rehearsal, OfAnAllIsTheSameAsOfEach) {
  const Paper paper(Plate);
  const Rehearser rehearser = paper.Rehearse();
  const std::string converted = paper.Passes.Text.Converted;
  for (std::size_t block = 1; block <= paper.Listing.size(); ++block) {
    const auto number = static_cast<std::int16_t>(block);
    GatherBodies bodies;
    GatherWalk walk(converted, bodies, paper.Machine);
    const GatherResult gathered = WalkToBlock(walk, {paper.Listing[block - 1], number, 0});
    EXPECT_EQ(rehearser.AtBlock(number, 0).State, gathered.State) << block;
  }
}

TEST(Rehearsal, OfABlockThatIsNeverMetSaysSo) {
  const Paper paper({"G00 X1 Y1", "GOTO 5", "G00 X2", "N5 G00 X3"});
  EXPECT_TRUE(paper.Rehearse().AtBlock(3, 0).Met) << "a GOTO alone is passed over";
  const Rehearsal beyond = paper.Rehearse().AtBlock(17, 0);
  EXPECT_FALSE(beyond.Met);
  EXPECT_THAT(beyond.Warnings, Contains("target not met"));
  EXPECT_FALSE(beyond.Entry);
}

TEST(Rehearsal, OfTheLastElementRunsToTheEndOnPurpose) {
  const Paper paper({"G31 T2=3 1=5", "G00 X1 Y1", "G01 X9"});
  EXPECT_TRUE(paper.Rehearse().AtRecord(4, std::nullopt).Met);
}

TEST(Rehearsal, NotesABeamThatOnlyTheSettingsKnow) {
  const Paper paper({"G31 T2=3 1=5", "G00 X1 Y1", "G01 X9", "G01 Y9"});
  EXPECT_THAT(paper.Rehearse().AtBlock(4, 0).Warnings, Contains("beam state not known from G31"));
}

TEST(Rehearsal, OfALoopEntersTheLapThatBeginsThere) {
  const Paper paper({"G31 T2=3 1=5", "G00 X0 Y0 M04", "P1=0", "N5 G91 G00 Y20", "N6 G01 X10",
                     "N7 G01 X-10", "P1=P1+1", "IF P1<3 GOTO 5"});
  const Rehearsal at = paper.Rehearse().AtBlock(5, 0);
  ASSERT_TRUE(at.Entry);
  EXPECT_EQ(at.Entry->Programmed.Y, 20) << "the first lap";
}

TEST(Projection, OnALineAndAnArc) {
  DrawRecord line;
  line.Code = partprogram::RecordCode::LineProfile;
  line.StartPoint = {0, 0, 0};
  line.EndPoint = {100, 0, 0};
  EXPECT_NEAR(ProjectOn(line, {30, 5}).X, 30, 1e-9);
  EXPECT_NEAR(ProjectOn(line, {-30, 5}).X, 0, 1e-9);
  EXPECT_NEAR(ProjectOn(line, {130, 5}).X, 100, 1e-9);
  DrawRecord arc;
  arc.Code = partprogram::RecordCode::ArcProfile;
  arc.CentrePoint = {0, 0, 0};
  arc[partprogram::Figure::Radius] = 10;
  arc[partprogram::Figure::StartAngle] = 0;
  arc[partprogram::Figure::Sweep] = -90;
  arc.StartPoint = {10, 0, 0};
  arc.EndPoint = {0, -10, 0};
  const core::Vector2 on = ProjectOn(arc, {20, -20});
  EXPECT_NEAR(std::hypot(on.X, on.Y), 10, 1e-6);
  EXPECT_NEAR(on.X, -on.Y, 1e-6);
  EXPECT_NEAR(ProjectOn(arc, {5, 30}).X, 10, 1e-6) << "beyond the start";
}

TEST(RestartWords, SayWhereTheHeadGoesAndWhatIsCutFirst) {
  const Paper paper(Plate);
  const Rehearsal at = paper.Rehearse().AtBlock(6, 0);
  const auto words = RestartWords(at, FirstCut(paper.Records(), at.Entry));
  EXPECT_EQ(words[0], "With the beam off the head goes to X700.00 Y100.00.");
  EXPECT_EQ(words[1], "First cut: the line from X700.00 Y100.00 to X700.00 Y300.00 of block 6.");
  EXPECT_EQ(words[2], "In force: millimetres, absolute, kerf right, beam on.");
}

}  // namespace
}  // namespace torvane::restart
