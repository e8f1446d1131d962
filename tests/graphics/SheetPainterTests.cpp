#include <gtest/gtest.h>

#include "PlotSetting.h"
#include "graphics/SheetPainter.h"

namespace torvane::graphics {
namespace {

using core::ColourName;
using tests::CanvasCall;
using tests::CanvasCallKind;
using tests::Overlay;
using tests::RecordingCanvas;

std::vector<CanvasCall> Datum(platform::Colour ink) {
  return {{CanvasCallKind::Circle, 0, 0, 5, 0, ink},
          {CanvasCallKind::Line, -5, 0, 5, 0, ink},
          {CanvasCallKind::Line, 0, -5, 0, 5, ink}};
}

std::vector<CanvasCall> SheetCalls(const core::ColourTable& colours, bool datum) {
  auto calls = Datum(colours[ColourName::PlotBackground]);
  calls.push_back({CanvasCallKind::FilledBox, 0, 0, 300, 200, colours[ColourName::PlotBackground]});
  calls.push_back({CanvasCallKind::FilledBox, 0, 0, 300, 200, colours[ColourName::SheetFill]});
  calls.push_back({CanvasCallKind::Box, 0, 0, 300, 200, colours[ColourName::SheetBoundry]});
  if (datum) {
    for (const auto& call : Datum(colours[ColourName::DatumMarker])) calls.push_back(call);
  }
  return calls;
}

TEST(SheetOfThePlot, IsPaintedInItsOrderWithTheDatumLast) {
  const core::ColourTable colours;
  RecordingCanvas canvas(800, 600);
  DrawSheet(canvas, colours, true, true, 300, 200);
  EXPECT_EQ(canvas.Calls(), SheetCalls(colours, true));
}

TEST(SheetOfThePlot, WithoutDatumStillWipesTheOldOne) {
  const core::ColourTable colours;
  RecordingCanvas canvas(800, 600);
  DrawSheet(canvas, colours, true, false, 300, 200);
  EXPECT_EQ(canvas.Calls(), SheetCalls(colours, false));
}

TEST(SheetOfThePlot, NotToBeDrawnTouchesNothing) {
  RecordingCanvas canvas(800, 600);
  DrawSheet(canvas, core::ColourTable(), false, true, 300, 200);
  EXPECT_TRUE(canvas.Calls().empty());
}

struct LimitsSetting {
  core::MachineData Machine;
  core::PlotView View;
  core::ActiveProgram Program;
  RecordingCanvas Canvas{800, 600};

  LimitsSetting() {
    Machine.TravelMinX = -10;
    Machine.TravelMaxX = 1010;
    Machine.TravelMinY = -20;
    Machine.TravelMaxY = 520;
    View.Corner2X = 100;
    Program.Selected = true;
    Program.SheetX = 1000;
    Program.SheetY = 500;
    Canvas.Scale({0, 100}, {100, 0});
  }

  platform::OverlayState Show(bool limitsShown, bool show) {
    ShowLimits(Canvas, Machine, View, Program, limitsShown, show);
    return Canvas.GetOverlay(Overlay::LimitRect);
  }
};

TEST(LimitRectangle, SpansTheTravelWithItsTopAtTheHighYWhereYGrowsUp) {
  LimitsSetting setting;
  const auto rect = setting.Show(true, true);
  EXPECT_TRUE(rect.Visible);
  EXPECT_EQ(rect.From.X, -10);
  EXPECT_EQ(rect.From.Y, 520);
  EXPECT_EQ(rect.To.X, 1010);
  EXPECT_EQ(rect.To.Y, -20);
}

TEST(LimitRectangle, HasItsTopAtTheLowYWhereYGrowsDown) {
  LimitsSetting setting;
  setting.Canvas.Scale({0, 0}, {100, 100});
  const auto rect = setting.Show(true, true);
  EXPECT_EQ(rect.From.Y, -20);
  EXPECT_EQ(rect.To.Y, 520);
}

TEST(LimitRectangle, FollowsTheButton) {
  LimitsSetting setting;
  EXPECT_FALSE(setting.Show(false, true).Visible);
  EXPECT_TRUE(setting.Show(true, true).Visible);
}

TEST(LimitRectangle, HidesWhenToldAndKeepsItsPlace) {
  LimitsSetting setting;
  setting.Show(true, true);
  const auto rect = setting.Show(true, false);
  EXPECT_FALSE(rect.Visible);
  EXPECT_EQ(rect.To.X, 1010);
}

TEST(LimitRectangle, OfASlotWithoutProgramStaysHiddenWithTheButtonDown) {
  LimitsSetting setting;
  setting.Show(true, true);
  setting.Program.Selected = false;
  EXPECT_FALSE(setting.Show(true, true).Visible);
}

TEST(LimitRectangle, NeedsAViewAndASheet) {
  LimitsSetting noView;
  noView.View = {};
  EXPECT_FALSE(noView.Show(true, true).Visible);
  LimitsSetting noWidth;
  noWidth.Program.SheetX = 0;
  EXPECT_FALSE(noWidth.Show(true, true).Visible);
  LimitsSetting noHeight;
  noHeight.Program.SheetY = 0;
  EXPECT_FALSE(noHeight.Show(true, true).Visible);
}

TEST(ShapesOverThePlot, TakeTheirColoursAndStartHidden) {
  core::ColourTable colours;
  colours.Set(ColourName::PlotCursor, 0x111111);
  colours.Set(ColourName::ProfilerMovementIcon, 0x222222);
  RecordingCanvas canvas(800, 600);
  canvas.SetOverlay(Overlay::IconShape, {{1, 2}, {3, 4}, true});
  SetUpPlotBox(canvas, colours);

  EXPECT_EQ(canvas.Calls(), (std::vector<CanvasCall>{{CanvasCallKind::Background, 0, 0, 0, 0,
                                                      colours[ColourName::PlotBackground]}}));
  const auto border = [&](Overlay which) { return canvas.GetOverlay(which).Border; };
  EXPECT_EQ(border(Overlay::SheetRect), colours[ColourName::SheetBoundry]);
  EXPECT_EQ(canvas.GetOverlay(Overlay::SheetRect).Fill, colours[ColourName::SheetFill]);
  EXPECT_TRUE(canvas.GetOverlay(Overlay::SheetRect).Filled);
  EXPECT_EQ(border(Overlay::LimitRect), colours[ColourName::PunchingZones]);
  EXPECT_FALSE(canvas.GetOverlay(Overlay::LimitRect).Filled);
  for (const auto which : {Overlay::ZoomRect, Overlay::CrossLine1, Overlay::CrossLine2}) {
    EXPECT_EQ(border(which), 0x111111U);
  }
  for (const auto which : {Overlay::IconShape, Overlay::IconLine1, Overlay::IconLine2}) {
    EXPECT_EQ(border(which), 0x222222U);
    EXPECT_FALSE(canvas.GetOverlay(which).Visible);
  }
}

}  // namespace
}  // namespace torvane::graphics
