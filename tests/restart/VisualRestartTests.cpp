// A restart chosen on the plot, by its keys and clicks.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "restart/RestartBench.h"

namespace torvane::restart {

using namespace tests;
namespace {

using testing::ElementsAre;

constexpr const char* BusyWarning =
    "warning 1 1 \nCan Not Restart\nWhile Machine Is Running or In Error !";
constexpr const char* NothingWarning =
    "warning 1 1 \nCan Not Visually Restart\nIf No Punches Are On View !";

struct OnThePlot : testing::Test, RestartBench {
  OnThePlot() {
    // Records: 2 settings, 3 move, 4 line, 5 arc, 6 line.
    Load(1, {"G31 T2=3 1=5", "G42 K0.2 M04", "G00 X100 Y100", "N7 G01 X700 Y100",
             "N8 G03 X700 Y300 I0 J100", "N9 G01 X100 Y300", "G40"});
  }
  void Begin() {
    System.Console.PlotKeyMode = VisualMode::Choice;
    Visual.BeginVisualRestart();
  }
  void Press(PathKey key) { Visual.VisualKey(key); }
  [[nodiscard]] int Current() const { return Visual.State().VisualCurrent; }
  [[nodiscard]] int Mode() const { return System.Console.PlotKeyMode; }
};

TEST_F(OnThePlot, BeginsWithTheFirstRecordOnViewWhateverItStandsFor) {
  Begin();
  EXPECT_EQ(Current(), 2) << "the settings, which lie at the datum";
  EXPECT_FALSE(Screen.SplitEnabled);
  EXPECT_THAT(Happened(), ElementsAre("mark 2"));
}

TEST_F(OnThePlot, AViewWithNothingWarnsAndLeaves) {
  core::PlotView& view = System.Views[1];
  view.Corner1X = 2000;
  view.Corner2X = 2010;
  Begin();
  EXPECT_THAT(Happened(), ElementsAre(NothingWarning, "leave graphics"));
  EXPECT_EQ(Visual.State(), VisualState{});
}

TEST_F(OnThePlot, TheKeysWalkAndPaint) {
  Begin();
  Happened();
  Press(PathKey::Next);
  Press(PathKey::Next);
  EXPECT_THAT(Happened(), ElementsAre("plain 2", "mark 3", "plain 3", "mark 4"));
  EXPECT_TRUE(Screen.SplitEnabled);
  Press(PathKey::Last);
  EXPECT_EQ(Current(), 6);
  Press(PathKey::First);
  EXPECT_EQ(Current(), 2);
  Press(PathKey::Previous);
  EXPECT_EQ(Current(), 6);
  EXPECT_EQ(Visual.State().VisualPrevious, 2);
}

TEST_F(OnThePlot, SelectInTheChoiceDoesNothing) {
  Begin();
  Press(PathKey::Last);
  Happened();
  Press(PathKey::Select);
  EXPECT_EQ(Mode(), VisualMode::Choice);
  EXPECT_THAT(Happened(), ElementsAre());
}

TEST_F(OnThePlot, SplitOnARecordThatIsNoElementDoesNothing) {
  Begin();
  Press(PathKey::Split);
  EXPECT_EQ(Mode(), VisualMode::Choice);
}

TEST_F(OnThePlot, AClickPicksTheNearest) {
  Begin();
  Happened();
  Visual.Pick(400, 101);
  EXPECT_EQ(Current(), 4);
  EXPECT_THAT(Happened(), ElementsAre("plain 2", "mark 4"));
  Visual.Pick(400, 101);
  EXPECT_THAT(Happened(), ElementsAre()) << "the same once more";
  Visual.Pick(2900, 1400);
  EXPECT_EQ(Current(), 4) << "nothing there";
  Press(PathKey::Split);
  Visual.Pick(100, 300);
  EXPECT_EQ(Current(), 4) << "no pick in a split";
}

TEST_F(OnThePlot, ASplitOfALineMovesItsPoint) {
  Begin();
  Visual.Pick(400, 100);
  Happened();
  Press(PathKey::Split);
  EXPECT_EQ(Mode(), VisualMode::SplitLine);
  EXPECT_EQ(Split.SplitStep, 20);
  Press(PathKey::Next);
  EXPECT_FLOAT_EQ(Split.SplitRecord.EndPoint.X, 120);
  EXPECT_THAT(Happened(), ElementsAre("plain 4", "mark 4"));
  Press(PathKey::Last);
  EXPECT_FLOAT_EQ(Split.SplitRecord.EndPoint.X, 680);
  Press(PathKey::First);
  EXPECT_FLOAT_EQ(Split.SplitRecord.EndPoint.X, 100);
  Press(PathKey::Split);
  EXPECT_EQ(Mode(), VisualMode::SplitLine);
}

TEST_F(OnThePlot, TheRestartOfALineGathersTheBlockAfterIt) {
  Begin();
  Visual.Pick(400, 100);
  Press(PathKey::Split);
  Press(PathKey::Next);
  Happened();
  Press(PathKey::Select);
  EXPECT_THAT(Happened(), ElementsAre("plain 4", "leave graphics", "open RestartForm"));
  const GatherState& state = States.RestartState;
  EXPECT_EQ(state.Gathered, GatherMark::VisualRestart);
  EXPECT_EQ(state.BlockNo, 8) << "the block after the chosen one";
  EXPECT_FLOAT_EQ(state.XPosition, 120);
  EXPECT_EQ(state.YPosition, 100);
  EXPECT_EQ(state.KerfSide, 2);
  EXPECT_TRUE(state.ProfilerOn);
  EXPECT_EQ(States.RestartNextState.XPosition, 700) << "the state itself, without the split";
  EXPECT_EQ(Split.RestartRecord.RecordIndex, 4) << "kept until RestartForm has gone";
}

TEST_F(OnThePlot, TheRestartOfAnArcInItsMiddle) {
  Begin();
  Visual.Pick(800, 200);
  EXPECT_EQ(Current(), 5);
  Press(PathKey::Split);
  EXPECT_EQ(Mode(), VisualMode::SplitArc);
  for (int i = 0; i < 15; ++i) Press(PathKey::Next);
  Press(PathKey::Select);
  EXPECT_EQ(States.RestartState.BlockNo, 9);
  EXPECT_NEAR(States.RestartState.XPosition, 800, 1e-3);
  EXPECT_NEAR(States.RestartState.YPosition, 200, 1e-3);
  System.Link.TrioLinkEnabled = false;
  Loop.After(10, [this] { Operation.Cancel(); });
  Operation.StartRestart();
  EXPECT_THAT(LeftText(), testing::HasSubstr("M04\r\nG03 X700.00 Y300.00 I-100.00 J0.00\r\nTABLE"));
}

TEST_F(OnThePlot, AWholeElementMayBeSelectedAtOnce) {
  Begin();
  Visual.Pick(400, 300);
  Press(PathKey::Split);
  Press(PathKey::Select);
  EXPECT_EQ(States.RestartState.XPosition, 700);
  EXPECT_EQ(States.RestartState.BlockNo, 0) << "past the last element: the line after it";
  EXPECT_EQ(States.RestartState.Gathered, GatherMark::VisualRestart);
}

TEST_F(OnThePlot, ABusyMachineWarnsAndLeavesTheGraphics) {
  Begin();
  Visual.Pick(400, 100);
  Press(PathKey::Split);
  System.State.MachineCycleBit = true;
  Happened();
  Press(PathKey::Select);
  EXPECT_THAT(Happened(), ElementsAre(BusyWarning, "plain 4", "leave graphics"));
  EXPECT_EQ(States.RestartState.Gathered, GatherMark::No);
  EXPECT_EQ(Split.SplitRecord.Code, 0);
}

TEST_F(OnThePlot, CancelGivesTheRecordItsColourBack) {
  Begin();
  Visual.Pick(400, 100);
  Press(PathKey::Split);
  Happened();
  Visual.Cancel();
  EXPECT_THAT(Happened(), ElementsAre("plain 4", "leave graphics"));
  Screen.LeaveGraphics();
  EXPECT_THAT(Happened(), ElementsAre("leave graphics")) << "only once";
}

TEST_F(OnThePlot, ALeftoverSplitFileIsDeleted) {
  Temp.Put("SplitCyc.drw", "x");
  Begin();
  EXPECT_FALSE(Temp.Has("SplitCyc.drw"));
}

TEST_F(OnThePlot, InsideASubroutineTheWholeCallIsPassed) {
  Load(1, {"G31 T2=3 1=5", "G00 X100 Y100", "N7 G98 S5 A0", "N8 G01 X300 Y100", "M30", "S5",
           "G01 X50", "G01 Y50", "M02"});
  Begin();
  Visual.Pick(125, 100);
  ASSERT_EQ(Split.RestartRecord.SubNumber, 5);
  Press(PathKey::Split);
  Press(PathKey::Select);
  EXPECT_EQ(States.RestartState.BlockNo, 8);
  EXPECT_EQ(States.RestartNextState.XPosition, 150) << "after the whole call";
  EXPECT_EQ(States.RestartNextState.YPosition, 150);
}

TEST_F(OnThePlot, ABlockBeyondTheListingHasNoTextAndNoNumber) {
  System.Active().BodyLines = 4;
  Begin();
  Visual.Pick(400, 100);
  Press(PathKey::Split);
  Press(PathKey::Select);
  EXPECT_EQ(States.RestartState.BlockNo, 0);
  EXPECT_EQ(States.RestartNextState.XPosition, 700);
}

TEST_F(OnThePlot, TwiceLeavesNothingOfTheFirst) {
  Begin();
  Visual.Pick(400, 100);
  Press(PathKey::Split);
  Press(PathKey::Last);
  Visual.Cancel();
  Begin();
  EXPECT_EQ(Current(), 2);
  EXPECT_EQ(Split.SplitRecord.Code, 0);
  Visual.Pick(400, 100);
  Press(PathKey::Split);
  EXPECT_EQ(Split.SplitRecord.EndPoint.X, 100) << "the whole line again";
}

}  // namespace
}  // namespace torvane::restart
