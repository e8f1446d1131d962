#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include "PlotSetting.h"
#include "graphics/MovementIcon.h"
#include "graphics/RealTimePlot.h"

namespace torvane::graphics {
namespace {

using core::ColourName;
using platform::PenStyle;
using tests::CanvasCall;
using tests::CanvasCallKind;
using tests::Cut;
using tests::MemoryFiles;
using tests::Overlay;
using tests::PlotSetting;
using tests::RecordingCanvas;

/// A selected program in slot 1 and a head that the test moves.
struct TraceSetting : PlotSetting {
  std::vector<std::string> Queries;
  float RunTime = 1.5F;
  std::vector<int> ShownBoxes;
  RealTimePlotter Plotter{
      System,
      Drawing,
      {[this](std::string_view expression, int decimals) {
         Queries.push_back(std::string(expression) + "/" + std::to_string(decimals));
         return RunTime;
       },
       [this](core::Slot slot) { ShownBoxes.push_back(slot.Number()); }}};

  TraceSetting() {
    Select(1, {Cut(0, 0, 100, 0)});
    Drawing.LoadPlot(1);
    System.State.MachineRunning = true;
    System.State.MachineWasRunning = true;
    Box1.Forget();
  }

  /// One tick with the head gone to (x, y) since the last.
  void Tick(float x, float y) {
    auto& state = System.State;
    state.LastXPosition = state.XPosition;
    state.LastYPosition = state.YPosition;
    state.XPosition = x;
    state.YPosition = y;
    Plotter.RealTimePlot();
  }

  void Beam(bool before, bool now) {
    System.State.BeamWasOn = before;
    System.State.BeamOn = now;
  }

  [[nodiscard]] bool IconVisible(int slot = 1) { return MovementIconVisible(Box(slot)); }
};

CanvasCall Segment(double x1, double y1, double x2, double y2, platform::Colour ink, PenStyle style,
                   int width) {
  return {CanvasCallKind::Line, x1, y1, x2, y2, ink, style, width};
}

TEST(Trace, WithTheBeamOnAtBothEndsIsACut) {
  TraceSetting setting;
  setting.Beam(true, true);
  setting.Tick(10, 20);
  EXPECT_EQ(setting.Box1.Calls(),
            (std::vector<CanvasCall>{Segment(
                0, 0, 10, 20, setting.Ink(ColourName::RealTimeProfiling), PenStyle::Solid, 1)}));
}

TEST(Trace, FirstSegmentAfterTheBeamComesOnIsMovement) {
  TraceSetting setting;
  setting.System.Plot.MovementStyle = 2;
  setting.Beam(false, true);
  setting.Tick(10, 20);
  EXPECT_EQ(setting.Box1.Calls(),
            (std::vector<CanvasCall>{Segment(
                0, 0, 10, 20, setting.Ink(ColourName::RealTimeMovement), PenStyle::Dotted, 1)}));
}

TEST(Trace, LastSegmentBeforeTheBeamGoesOffIsMovement) {
  TraceSetting setting;
  setting.System.Plot.MovementStyle = 0;
  setting.Beam(true, false);
  setting.Tick(10, 20);
  ASSERT_EQ(setting.Box1.Calls().size(), 1U);
  EXPECT_EQ(setting.Box1.Calls()[0].Ink, setting.Ink(ColourName::RealTimeMovement));
  EXPECT_EQ(setting.Box1.Calls()[0].Style, PenStyle::Solid);
}

TEST(Trace, ByDefaultMovesAreNotTracedButTheIconMoves) {
  TraceSetting setting;
  setting.System.Plot.ShowMovementIcon = true;
  ASSERT_EQ(setting.System.Plot.MovementStyle, -999);
  setting.Tick(10, 20);
  EXPECT_TRUE(setting.Box1.Calls().empty());
  EXPECT_TRUE(setting.IconVisible());
  const auto before = setting.Box1.GetOverlay(Overlay::IconLine1).From.X;
  setting.Tick(30, 20);
  EXPECT_EQ(setting.Box1.GetOverlay(Overlay::IconLine1).From.X, before + 20);
}

TEST(Trace, WithoutIconSettingNoIconShows) {
  TraceSetting setting;
  setting.Tick(10, 20);
  EXPECT_FALSE(setting.IconVisible());
}

TEST(Trace, StandingHeadDrawsNothingAndAHiddenIconIsPlacedOnce) {
  TraceSetting setting;
  setting.System.Plot.ShowMovementIcon = true;
  setting.System.Plot.MovementStyle = 0;
  setting.Beam(true, true);
  setting.Tick(0, 0);
  EXPECT_TRUE(setting.Box1.Calls().empty());
  EXPECT_TRUE(setting.IconVisible());
  // Once it is up, a standing head leaves it where it was put.
  auto shape = setting.Box1.GetOverlay(Overlay::IconShape);
  shape.From.X = 4711;
  setting.Box1.SetOverlay(Overlay::IconShape, shape);
  setting.Tick(0, 0);
  EXPECT_EQ(setting.Box1.GetOverlay(Overlay::IconShape).From.X, 4711);
}

TEST(Trace, AnyDifferenceOfASingleIsAMove) {
  TraceSetting setting;
  setting.Beam(true, true);
  setting.Tick(0, std::numeric_limits<float>::denorm_min());
  EXPECT_EQ(setting.Box1.Calls().size(), 1U);
}

TEST(Trace, PenOfACutIsTheWidthRoundedAndEverythingElseIsThin) {
  TraceSetting setting;
  setting.System.Plot.RealTimeWidth = 3.6F;
  setting.System.Plot.MovementStyle = 2;
  setting.Beam(true, true);
  setting.Tick(10, 0);
  setting.Beam(true, false);
  setting.Tick(20, 0);
  setting.System.State.MachineRunning = false;
  setting.Drawing.LoadPlot(1);
  const auto& calls = setting.Box1.Calls();
  EXPECT_EQ(calls[0].Width, 4);
  EXPECT_EQ(calls[1].Width, 1);
  for (std::size_t i = 2; i < calls.size(); ++i) {
    EXPECT_EQ(calls[i].Width, 1);
    EXPECT_EQ(calls[i].Style, PenStyle::Solid);
  }
}

TEST(Trace, WidthOfHalfAPixelGoesToTheEvenOne) {
  TraceSetting setting;
  setting.System.Plot.RealTimeWidth = 2.5F;
  setting.Beam(true, true);
  setting.Tick(10, 0);
  EXPECT_EQ(setting.Box1.Calls()[0].Width, 2);
}

TEST(Trace, StartOfACycleRepaintsFirst) {
  TraceSetting setting;
  setting.System.State.MachineWasRunning = false;
  setting.System.State.RunSeconds = 99;
  setting.Beam(true, true);
  setting.Tick(10, 0);
  const auto& calls = setting.Box1.Calls();
  EXPECT_EQ(calls.front().Kind, CanvasCallKind::Cls);
  EXPECT_EQ(calls.back().Ink, setting.Ink(ColourName::RealTimeProfiling));
  EXPECT_EQ(setting.System.State.RunSeconds, 1.5F);
}

TEST(Trace, OnlyTheStartOfACycleWipesTheTraceBefore) {
  TraceSetting setting;
  setting.Beam(true, true);
  setting.Tick(10, 0);
  setting.System.State.MachineRunning = false;
  setting.Tick(20, 0);
  setting.System.State.MachineWasRunning = false;
  setting.Tick(30, 0);
  EXPECT_TRUE(setting.Box1.CallsOf(CanvasCallKind::Cls).empty());
  EXPECT_EQ(setting.Box1.CallsOf(CanvasCallKind::Line).size(), 1U);
}

TEST(Trace, EndOfACycleTakesTheIconOffBothCanvasesAndLeavesTheTrace) {
  TraceSetting setting;
  setting.System.Plot.ShowMovementIcon = true;
  setting.Beam(true, true);
  setting.Tick(10, 0);
  setting.Plotter.PlaceMovementIcon(2, 5, 5, true);
  setting.System.State.MachineRunning = false;
  setting.Tick(20, 0);
  EXPECT_FALSE(setting.IconVisible(1));
  EXPECT_FALSE(setting.IconVisible(2));
  EXPECT_FALSE(setting.Box1.GetOverlay(Overlay::IconLine1).Visible);
  EXPECT_FALSE(setting.Box1.GetOverlay(Overlay::IconLine2).Visible);
  EXPECT_EQ(setting.Box1.Calls().size(), 1U) << "no segment outside a cycle, none wiped";
}

TEST(Trace, IconLeftOverOutsideACycleGoesAtTheNextTick) {
  TraceSetting setting;
  setting.System.State.MachineRunning = false;
  setting.System.State.MachineWasRunning = false;
  setting.Plotter.PlaceMovementIcon(1, 5, 5, true);
  setting.Plotter.PlaceMovementIcon(2, 5, 5, true);
  setting.Tick(0, 0);
  EXPECT_FALSE(setting.IconVisible(1));
  EXPECT_FALSE(setting.IconVisible(2));
}

TEST(Trace, OutsideACycleAnIconOnTheOtherCanvasAloneStays) {
  TraceSetting setting;
  setting.System.State.MachineRunning = false;
  setting.System.State.MachineWasRunning = false;
  setting.Plotter.PlaceMovementIcon(2, 5, 5, true);
  setting.Tick(0, 0);
  EXPECT_TRUE(setting.IconVisible(2));
}

TEST(Trace, RunTimeIsAskedForOnEveryTickWithAProgram) {
  TraceSetting setting;
  setting.Tick(0, 0);
  setting.System.State.MachineRunning = false;
  setting.System.State.MachineWasRunning = false;
  setting.Tick(0, 0);
  EXPECT_EQ(setting.Queries, (std::vector<std::string>{"VR(52)/2", "VR(52)/2"}));
  EXPECT_EQ(setting.System.State.RunSeconds, 1.5F);
}

TEST(Trace, WithoutProgramOrLinkNothingIsAskedOrDrawn) {
  TraceSetting noProgram;
  noProgram.Program(1).Selected = false;
  noProgram.System.State.MachineWasRunning = false;
  noProgram.Beam(true, true);
  noProgram.Tick(10, 10);
  EXPECT_TRUE(noProgram.Queries.empty());
  EXPECT_TRUE(noProgram.Box1.Calls().empty());

  TraceSetting noLink;
  noLink.System.Link.TrioLinkEnabled = false;
  noLink.Beam(true, true);
  noLink.Tick(10, 10);
  EXPECT_TRUE(noLink.Queries.empty());
  EXPECT_TRUE(noLink.Box1.Calls().empty());
}

TEST(Trace, OnlyTheActiveSlotGetsOne) {
  TraceSetting setting;
  setting.Select(2, {});
  setting.System.ActiveSlot = 2;
  setting.Beam(true, true);
  setting.Tick(10, 10);
  EXPECT_TRUE(setting.Box1.Calls().empty());
  EXPECT_EQ(setting.Box2.Calls().size(), 1U);
}

TEST(Trace, OperatorWhoChangesTheSlotDuringTheQueryFindsTheOtherCanvasServed) {
  TraceSetting setting;
  setting.Select(2, {});
  setting.System.State.MachineRunning = false;
  RealTimePlotter plotter(setting.System, setting.Drawing,
                          {[&](std::string_view, int) {
                             setting.System.ActiveSlot = 2;
                             return 0.0F;
                           },
                           [](core::Slot) {}});
  setting.Plotter.PlaceMovementIcon(2, 5, 5, true);
  setting.System.State.MachineWasRunning = false;
  plotter.RealTimePlot();
  EXPECT_FALSE(setting.IconVisible(2));
}

TEST(PlotOfThePoll, RedrawsASlotAndBringsItsCanvasForward) {
  TraceSetting setting;
  supervision::PlotStage& stage = setting.Plotter;
  setting.System.State.RunSeconds = 9;
  stage.RefreshPlot(1);
  EXPECT_EQ(setting.Box1.Calls().front().Kind, CanvasCallKind::Cls);
  EXPECT_EQ(setting.System.State.RunSeconds, 0);
  stage.ShowPlotBox(2);
  EXPECT_EQ(setting.ShownBoxes, std::vector<int>{2});
}

TEST(TraceLine, LeavesAPlainPenAndANegativeStyleDrawsNothing) {
  RecordingCanvas canvas(800, 600);
  TraceLine(canvas, 1, 2, 3, 4, 0xFF, 2, 7);
  canvas.Line(0, 0, 1, 1, 0xFF);
  TraceLine(canvas, 1, 2, 3, 4, 0xFF, -999, 7);
  TraceLine(canvas, 1, 2, 3, 4, 0xFF, -1, 7);
  EXPECT_EQ(canvas.Calls(),
            (std::vector<CanvasCall>{Segment(1, 2, 3, 4, 0xFF, PenStyle::Dotted, 7),
                                     Segment(0, 0, 1, 1, 0xFF, PenStyle::Solid, 1)}));
}

TEST(MovementIcon, SideFollowsTheForm) {
  EXPECT_EQ(IconSideOf(20, IconForm::Rectangle), 16);
  EXPECT_EQ(IconSideOf(20, IconForm::Square), 16);
  EXPECT_EQ(IconSideOf(20, IconForm::Oval), 20);
  EXPECT_EQ(IconSideOf(20, IconForm::Circle), 20);
  EXPECT_EQ(IconSideOf(20, IconForm::RoundedRectangle), 18);
  EXPECT_EQ(IconSideOf(20, IconForm::RoundedSquare), 18);
  EXPECT_EQ(IconSideOf(-20, IconForm::Circle), 20);
  EXPECT_EQ(IconSideOf(0, IconForm::Circle), 10) << "a view without size";
  EXPECT_EQ(IconSideOf(0, MovementIconForm), 9);
}

TEST(MovementIcon, IsASquareWithItsDiagonals) {
  RecordingCanvas canvas(800, 600);
  canvas.Scale({0, 600}, {800, 0});
  PlaceMovementIcon(canvas, 20, 100, 50, true);
  const auto shape = canvas.GetOverlay(Overlay::IconShape);
  EXPECT_EQ(shape.From.X, 91);
  EXPECT_EQ(shape.From.Y, 59) << "its top is the high Y where Y grows up the screen";
  EXPECT_EQ(shape.To.X, 109);
  EXPECT_EQ(shape.To.Y, 41);
  const auto first = canvas.GetOverlay(Overlay::IconLine1);
  EXPECT_EQ(first.From.X, 91);
  EXPECT_EQ(first.From.Y, 41);
  EXPECT_EQ(first.To.X, 109);
  EXPECT_EQ(first.To.Y, 59);
  const auto second = canvas.GetOverlay(Overlay::IconLine2);
  EXPECT_EQ(second.From.X, 91);
  EXPECT_EQ(second.From.Y, 59);
  EXPECT_EQ(second.To.X, 109);
  EXPECT_EQ(second.To.Y, 41);

  canvas.Scale({0, 0}, {800, 600});
  PlaceMovementIcon(canvas, 20, 100, 50, true);
  EXPECT_EQ(canvas.GetOverlay(Overlay::IconShape).From.Y, 41);
  EXPECT_EQ(canvas.GetOverlay(Overlay::IconLine1).From.Y, 41) << "the diagonals stay";
}

TEST(MovementIcon, KeepsItsColoursWhenItMovesAndItsPlaceWhenItHides) {
  RecordingCanvas canvas(800, 600);
  canvas.SetOverlay(Overlay::IconShape, {{}, {}, false, 0xAB, 0xCD, false});
  PlaceMovementIcon(canvas, 20, 100, 50, true);
  PlaceMovementIcon(canvas, 20, 0, 0, false);
  const auto shape = canvas.GetOverlay(Overlay::IconShape);
  EXPECT_EQ(shape.Border, 0xABU);
  EXPECT_FALSE(shape.Visible);
  EXPECT_EQ(shape.From.X, 91);
}

TEST(MovementIcon, IsRescaledByTheNextTickThatMovesItAfterAZoom) {
  TraceSetting setting;
  setting.System.Plot.ShowMovementIcon = true;
  setting.Tick(10, 10);
  const auto width = [&] {
    const auto shape = setting.Box1.GetOverlay(Overlay::IconShape);
    return shape.To.X - shape.From.X;
  };
  const double before = width();
  EXPECT_NEAR(before, 1120.0 / 64 * 0.9, 1e-9);
  auto& view = setting.View(1);
  view.Corner1X = 0;
  view.Corner2X = 112;
  view.Corner1Y = 84;
  view.Corner2Y = 0;
  view.ViewZoomed = true;
  setting.Drawing.RefreshPlot(1);
  setting.Tick(10, 10);
  EXPECT_EQ(width(), before) << "a standing head leaves it";
  setting.Tick(11, 10);
  EXPECT_NEAR(width(), before / 10, 1e-9);
}

RC_GTEST_PROP(TraceProperties, IsOneSegmentAMoveFromTheLastPlaceToThePresent, ()) {
  TraceSetting setting;
  setting.System.Plot.MovementStyle = static_cast<std::int16_t>(*rc::gen::element(0, 2, -999));
  setting.System.Plot.RealTimeWidth = static_cast<float>(*rc::gen::inRange(1, 101));
  float x = 0;
  float y = 0;
  bool was = false;
  for (int tick = 0; tick < 30; ++tick) {
    const bool now = *rc::gen::arbitrary<bool>();
    const auto nextX = x + static_cast<float>(*rc::gen::inRange(-1, 2));
    const auto nextY = y + static_cast<float>(*rc::gen::inRange(-1, 2));
    setting.Beam(was, now);
    setting.Box1.Forget();
    setting.Tick(nextX, nextY);
    const bool moved = nextX != x || nextY != y;
    const bool cut = was && now;
    const bool drawn = moved && (cut || setting.System.Plot.MovementStyle >= 0);
    const auto& calls = setting.Box1.Calls();
    RC_ASSERT(calls.size() == (drawn ? 1U : 0U));
    if (drawn) {
      const auto ink = cut ? ColourName::RealTimeProfiling : ColourName::RealTimeMovement;
      const auto style =
          cut ? PenStyle::Solid : static_cast<PenStyle>(setting.System.Plot.MovementStyle);
      const int width = cut ? static_cast<int>(setting.System.Plot.RealTimeWidth) : 1;
      RC_ASSERT(calls[0] == Segment(x, y, nextX, nextY, setting.Ink(ink), style, width));
    }
    x = nextX;
    y = nextY;
    was = now;
  }
}

}  // namespace
}  // namespace torvane::graphics
