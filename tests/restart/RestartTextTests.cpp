// The texts of a restart, to the letter.
#include <gtest/gtest.h>

#include "restart/RestartOperation.h"
#include "restart/RestartText.h"

namespace torvane::restart {
namespace {

using Lines = std::vector<std::string>;

constexpr const char* NothingGiven =
    " P101=-999 P102=-999 P103=-999 P104=-999 P105=-999 P106=-999 P107=-999 P108=-999 P109=-999 "
    "P110=-999";

GatherState StateAt(float x, float y) {
  GatherState state;
  state.Gathered = GatherMark::Reached;
  state.XPosition = x;
  state.YPosition = y;
  return state;
}

partprogram::DrawRecord LineRest() {
  // From the element's end at (700, 100) back to the split point at (120, 100).
  partprogram::DrawRecord rest;
  rest.Code = partprogram::RecordCode::LineProfile;
  rest.StartPoint = {700, 100, 0};
  rest.EndPoint = {120, 100, 0};
  return rest;
}

TEST(RestartText, ABlockRestartWithTheBeamOff) {
  const GatherState state = StateAt(700, 100.5F);
  const partprogram::DrawRecord blank;
  EXPECT_EQ(RestartLines({state, "******\r\n", blank, 9, 1}),
            (Lines{"M100", "G00 X700 Y100.5 G40", NothingGiven, "TABLE (9,-999)"}));
}

TEST(RestartText, NumbersAreTheShortestTextOfTheSingle) {
  GatherState state = StateAt(12.3F, -0.1F);
  state.KerfSide = 2;
  state.ParameterValues[4] = 5;
  state.ParameterValues[9] = -2.55F;
  const partprogram::DrawRecord blank;
  const Lines lines = RestartLines({state, "", blank, 0, 1});
  EXPECT_EQ(lines[1], "G00 X12.3 Y-0.1 G42");
  EXPECT_EQ(lines[2],
            " P101=-999 P102=-999 P103=-999 P104=-999 P105=5 P106=-999 P107=-999 P108=-999 "
            "P109=-999 P110=-2.55");
}

TEST(RestartText, AVisualRestartEndsWithTheRestOfItsElement) {
  GatherState state = StateAt(120, 100);
  state.ProfilerOn = true;
  state.KerfSide = 1;
  EXPECT_EQ(RestartLines({state, "******", LineRest(), 15, 1}),
            (Lines{"M100", "G00 X120 Y100 G41", NothingGiven, "M04", "G01 X700.00 Y100.00",
                   "TABLE (15,-999)"}));
}

TEST(RestartText, TheRestOfAnArcRunsToItsEndAboutItsCentre) {
  partprogram::DrawRecord rest;
  rest.Code = partprogram::RecordCode::ArcProfile;
  rest.CentrePoint = {100, 100, 0};
  rest[partprogram::Figure::Radius] = 10;
  rest[partprogram::Figure::StartAngle] = 90;  // turned: from the element's end
  rest[partprogram::Figure::Sweep] = -90;
  const GatherState state = StateAt(110, 100);
  EXPECT_EQ(RestartLines({state, "", rest, 3, 1})[3], "G03 X100.00 Y110.00 I-10.00 J0.00");
  EXPECT_EQ(RestartLines({state, "", rest, 3, 0})[3], "G02 X100.00 Y110.00 I-10.00 J0.00");
}

TEST(RestartText, WhateverElseStandsInTheGatherTextGoesFirst) {
  const GatherState state = StateAt(0, 0);
  const partprogram::DrawRecord blank;
  const Lines lines =
      RestartLines({state, " G95 I5 \r\n\r\nM55 I1\r\n******\r\n", blank, 1, 1}, "N1 ");
  EXPECT_EQ(lines[0], "N1 G95 I5");
  EXPECT_EQ(lines[1], "M55 I1");
  EXPECT_EQ(lines[2], "M100");
}

TEST(RestartText, OnlyTheTableLineGoesToTheController) {
  GatherState state = StateAt(1, 2);
  state.ProfilerOn = true;
  state.BlockNo = 123;
  const RestartLineSet set = RestartLineSetOf({state, "******", LineRest(), 9, 1}, 1);
  EXPECT_EQ(set.Now, (Lines{"TABLE (9,-999)", "VR(91)=3"}));
  EXPECT_EQ(set.AtStart, (Lines{"VR(91)=1", "B1.00123R"}));
  EXPECT_EQ(set.OnCancel, (Lines{"VR(91)=1"}));
  EXPECT_EQ(set.File.size(), 6U);
}

TEST(RestartText, TheFractionIsTheShortestPlainText) {
  EXPECT_EQ(BlockFraction(123), ".00123");
  EXPECT_EQ(BlockFraction(100), ".001");
  EXPECT_EQ(BlockFraction(5), ".00005");
  EXPECT_EQ(BlockFraction(32767), ".32767");
  EXPECT_EQ(BlockFraction(10000), ".1");
  EXPECT_EQ(BlockFraction(0), "");
  EXPECT_EQ(StartLine(1, 0), "B1R");
  EXPECT_EQ(StartLine(2, 123), "B2.00123R");
}

TEST(RestartLabels, OfABeamThatIsOff) {
  GatherState state = StateAt(1.005F, 2);
  state.Imperial = true;
  state.KerfSide = 2;
  const RestartLabels labels = LabelsOf(state, "Laser 1");
  EXPECT_EQ(labels.ToolLabel, (std::array<std::string, 2>{"", ""}));
  EXPECT_EQ(labels.PositnLabel, (std::array<std::string, 4>{"IMPERIAL", "X1.00", "Y2.00", ""}));
  EXPECT_EQ(labels.HitsLabel, "");
}

TEST(RestartLabels, OfABeamThatIsOn) {
  GatherState state = StateAt(1, 2);
  state.ProfilerOn = true;
  for (const auto& [side, text] : {std::pair{0, "None"}, {1, "Left"}, {2, "Right"}}) {
    state.KerfSide = static_cast<std::int16_t>(side);
    const RestartLabels labels = LabelsOf(state, "Laser 1");
    EXPECT_EQ(labels.ToolLabel[0], "");
    EXPECT_EQ(labels.ToolLabel[1], "Laser 1");
    EXPECT_EQ(labels.PositnLabel[0], "METRIC");
    EXPECT_EQ(labels.PositnLabel[3], "G4" + std::to_string(side));
    EXPECT_EQ(labels.HitsLabel, std::string("Kerf Compensation : ") + text);
  }
}

}  // namespace
}  // namespace torvane::restart
