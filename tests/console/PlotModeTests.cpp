// Zoom and pan by keys and by pointer.
#include <gmock/gmock.h>

#include "ConsoleFixture.h"

namespace torvane::tests {
namespace {

using toolkit::Key;

class PlotModes : public ConsoleFixture {
 protected:
  void Begin() {
    Start();
    Select("STAR");
    TypeF(7);
    ASSERT_EQ(Mode(), 0);
    ASSERT_TRUE(System.Console.PlotKeysActive);
  }
  [[nodiscard]] int Mode() const { return System.Console.PlotKeyMode; }
  [[nodiscard]] const core::PlotView& View() const { return System.Views[System.ActiveSlot]; }
  [[nodiscard]] platform::OverlayState Shape(platform::Overlay which) {
    return Main().PlotBox(System.ActiveSlot).Canvas().GetOverlay(which);
  }
  [[nodiscard]] std::string Line(const std::string& panel) {
    auto* found = Control<toolkit::Panel>("FrontEnd", panel);
    return found == nullptr ? "(none)" : found->Caption();
  }
};

TEST_F(PlotModes, ZoomInByKeysIsAnchoredAtTheLowCorner) {
  Begin();
  const core::PlotView before = View();
  Type(Key::Z);
  EXPECT_EQ(Mode(), 1);
  EXPECT_TRUE(System.Console.FormsLocked) << "through the mode";
  EXPECT_EQ(Line("TextPanel"), "GRAPHICS - ZOOM IN");
  EXPECT_EQ(Line("StatusPanel"), "SELECT FIRST CORNER");
  EXPECT_EQ(Caption("FrontEnd", "ShutdownButton"), "&CANCEL");
  EXPECT_TRUE(Shape(platform::Overlay::CrossLine1).Visible);
  Type(Key::S);
  EXPECT_EQ(Mode(), 2);
  EXPECT_EQ(Line("StatusPanel"), "SELECT OPPOSITE CORNER");
  for (int i = 0; i < 8; ++i) Type(Key::Right);
  for (int i = 0; i < 4; ++i) Type(Key::Up);
  EXPECT_TRUE(Shape(platform::Overlay::ZoomRect).Visible);
  Type(Key::S);
  EXPECT_EQ(Mode(), 0);
  EXPECT_TRUE(View().ViewZoomed);
  EXPECT_FLOAT_EQ(View().Corner1X, (before.Corner1X + before.Corner2X) / 2);
  EXPECT_NEAR(View().Corner2X - View().Corner1X, (before.Corner2X - before.Corner1X) / 8, 0.5);
  EXPECT_FALSE(Shape(platform::Overlay::ZoomRect).Visible);
  EXPECT_FALSE(System.Console.FormsLocked);
  Type(Key::R);
  EXPECT_FALSE(View().ViewZoomed);
  EXPECT_FLOAT_EQ(View().Corner1X, before.Corner1X);
}

TEST_F(PlotModes, RedrawAlsoZeroesTheRunTime) {
  Begin();
  System.State.RunSeconds = 12;
  Type(Key::R);
  EXPECT_EQ(System.State.RunSeconds, 0);
}

TEST_F(PlotModes, ASelectionOfNothingEndsTheModeAndKeepsTheView) {
  Begin();
  const float left = View().Corner1X;
  Type(Key::Z);
  Type(Key::S);
  Type(Key::S);
  EXPECT_EQ(Mode(), 0);
  EXPECT_EQ(View().Corner1X, left);
  EXPECT_FALSE(View().ViewZoomed);
}

TEST_F(PlotModes, ZoomOutFiveTimesAndPanByKeys) {
  Begin();
  const core::PlotView fit = View();
  for (int i = 0; i < 5; ++i) Type(Key::O);
  EXPECT_EQ(Mode(), 0);
  EXPECT_NEAR((View().Corner2X - View().Corner1X) / (fit.Corner2X - fit.Corner1X), 7.59375, 1e-3);
  Type(Key::R);
  Type(Key::P);
  EXPECT_EQ(Mode(), 4);
  EXPECT_EQ(Line("TextPanel"), "GRAPHICS - PAN");
  EXPECT_EQ(Line("StatusPanel"), "SELECT NEW CENTRE POSITION");
  Type(Key::Left);
  Type(Key::S);
  EXPECT_NEAR(fit.Corner1X - View().Corner1X, (fit.Corner2X - fit.Corner1X) / 64, 0.01);
  EXPECT_NEAR(View().Corner2X - View().Corner1X, fit.Corner2X - fit.Corner1X, 0.01);
}

TEST_F(PlotModes, CLeavesAModeAndXTheState) {
  Begin();
  Type(Key::Z);
  Type(Key::C);
  EXPECT_EQ(Mode(), 0);
  EXPECT_TRUE(System.Console.PlotKeysActive);
  EXPECT_FALSE(Shape(platform::Overlay::CrossLine1).Visible);
  Type(Key::X);
  EXPECT_FALSE(System.Console.PlotKeysActive);
  EXPECT_EQ(Line("TextPanel"), "");
  EXPECT_EQ(Line("StatusPanel"), "");
  EXPECT_EQ(Caption("FrontEnd", "ShutdownButton"), " SHUTDOWN   F12");
  EXPECT_TRUE(Down("FrontEnd", "ProgramButton(1)"));
}

TEST_F(PlotModes, TwoClicksZoomAndAreRoundedToTwoPlaces) {
  Begin();
  Type(Key::Z);
  Main().Modes().PlotMouseUp(1, 100.006, 50.004);
  EXPECT_EQ(Mode(), 2);
  Main().Modes().PlotMouseUp(2, 300, 90);
  EXPECT_EQ(Mode(), 2) << "the other slot's plot";
  Main().Modes().PlotMouseUp(1, 300, 90);
  EXPECT_EQ(Mode(), 0);
  EXPECT_FLOAT_EQ(View().Corner1X, 100.01F);
  EXPECT_FLOAT_EQ(View().Corner2Y, 50);
}

TEST_F(PlotModes, AClickPansAndOneInIdleDoesNothing) {
  Begin();
  const core::PlotView fit = View();
  Main().Modes().PlotMouseUp(1, 10, 10);
  EXPECT_EQ(View().Corner1X, fit.Corner1X);
  Type(Key::P);
  Main().Modes().PlotMouseUp(1, 10, 20);
  EXPECT_EQ(Mode(), 0);
  EXPECT_NEAR((View().Corner1X + View().Corner2X) / 2, 10, 1e-3);
  EXPECT_NEAR((View().Corner1Y + View().Corner2Y) / 2, 20, 1e-3);
}

TEST_F(PlotModes, EveryModeByPointerAlone) {
  Start();
  Select("STAR");
  const auto press = [this](const char* name) {
    auto* button = Control<toolkit::Button>("FrontEnd", name);
    ASSERT_NE(button, nullptr) << name;
    ASSERT_TRUE(button->OnShow()) << name;
    Click(*button);
  };
  const auto clickPlot = [this](double x, double y) {
    auto& plot = Main().PlotBox(1);
    ClickAt(plot, plot.Canvas().ToPixelX(x), plot.Canvas().ToPixelY(y));
  };
  press("MainButton(7)");
  EXPECT_TRUE(System.Console.PlotKeysActive);
  const core::PlotView fit = View();
  clickPlot(100, 100);
  EXPECT_EQ(View().Corner1X, fit.Corner1X) << "a release in idle does nothing";
  press("GraphicsButton(2)");
  for (const char* key : {"PathButton(1)", "PathButton(3)", "PathButton(6)"}) press(key);
  EXPECT_EQ(Mode(), 2) << "keys and clicks may be mixed";
  for (const char* key : {"PathButton(2)", "PathButton(2)", "PathButton(4)"}) press(key);
  clickPlot(100, 100);
  EXPECT_EQ(Mode(), 0);
  EXPECT_TRUE(View().ViewZoomed);
  const core::PlotView zoomed = View();
  press("GraphicsButton(4)");
  clickPlot((zoomed.Corner1X * 3 + zoomed.Corner2X) / 4, zoomed.Corner1Y);
  EXPECT_EQ(Mode(), 0);
  EXPECT_LT(View().Corner1X, zoomed.Corner1X);
  press("GraphicsButton(3)");
  EXPECT_GT(View().Corner2X - View().Corner1X, zoomed.Corner2X - zoomed.Corner1X);
  press("GraphicsButton(2)");
  press("ShutdownButton");
  EXPECT_EQ(Mode(), 0) << "only the mode is left";
  press("GraphicsButton(1)");
  EXPECT_FLOAT_EQ(View().Corner1X, fit.Corner1X);
  press("ShutdownButton");
  EXPECT_FALSE(System.Console.PlotKeysActive);
}

TEST_F(PlotModes, TheModesAreTheSameWhileTheMachineCuts) {
  Start();
  Select("STAR");
  Machine().CycleStart();
  RunFor(2000);
  ASSERT_TRUE(System.State.MachineRunning);
  TypeF(7);
  Type(Key::Z);
  RunFor(500);
  EXPECT_EQ(Mode(), 1) << "the poll goes on beside it";
  Type(Key::S);
  for (int i = 0; i < 6; ++i) Type(Key::Right);
  for (int i = 0; i < 6; ++i) Type(Key::Up);
  Type(Key::S);
  EXPECT_TRUE(View().ViewZoomed);
  RunFor(500);
  EXPECT_TRUE(System.State.MachineRunning);
  EXPECT_TRUE(Shape(platform::Overlay::IconShape).Visible);
  Type(Key::X);
  EXPECT_TRUE(System.State.MachineRunning);
}

TEST_F(PlotModes, TheUnusedKeyIsHidden) {
  Begin();
  Type(Key::Z);
  EXPECT_FALSE(Main().PathButton(5).Visible());
  EXPECT_EQ(Caption("FrontEnd", "PathButton(1)"), "&LEFT");
}

}  // namespace
}  // namespace torvane::tests
