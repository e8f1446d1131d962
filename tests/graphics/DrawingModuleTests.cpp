#include <gtest/gtest.h>

#include "PlotSetting.h"
#include "graphics/DrawingModule.h"

namespace torvane::graphics {
namespace {

using core::ColourName;
using tests::Arc;
using tests::CanvasCallKind;
using tests::Cut;
using tests::MemoryFiles;
using tests::MoveTo;
using tests::Overlay;
using tests::PlotSetting;

TEST(LoadPlot, OfASlotWithoutProgramShowsAnEmptyCanvas) {
  PlotSetting setting;
  setting.Box1.SetOverlay(Overlay::LimitRect, {{0, 0}, {1, 1}, true});
  setting.Drawing.LoadPlot(1);
  ASSERT_EQ(setting.Box1.Calls().size(), 1U);
  EXPECT_EQ(setting.Box1.Calls()[0].Kind, CanvasCallKind::Cls);
  EXPECT_FALSE(setting.Box1.GetOverlay(Overlay::LimitRect).Visible);
  EXPECT_TRUE(setting.Files.Log.empty());
  EXPECT_EQ(setting.View(1).Corner2X, 0) << "the view stays empty until a program is found";
}

TEST(LoadPlot, FitsTheSheetScalesAndDrawsInOrder) {
  PlotSetting setting;
  setting.Select(1, {MoveTo(0, 0, 10, 10), Cut(10, 10, 20, 10), Cut(20, 10, 20, 20)});
  setting.Drawing.LoadPlot(1);

  const auto& calls = setting.Box1.Calls();
  ASSERT_GE(calls.size(), 2U);
  EXPECT_EQ(calls[0].Kind, CanvasCallKind::Cls);
  EXPECT_EQ(calls[1].Kind, CanvasCallKind::Scale);
  EXPECT_EQ(calls[1].X1, -60);
  EXPECT_EQ(calls[1].X2, 1060);
  EXPECT_EQ(calls[1].Y2, -30);
  EXPECT_EQ(calls[1].Y1, 810) << "1120 wide at 4 to 3, from -30 up";
  EXPECT_EQ(setting.View(1).PlotIconSize, 1120.0 / 64);
  EXPECT_EQ(calls[calls.size() - 2].X2, 20);
  EXPECT_EQ(calls.back().Y2, 20);
  EXPECT_EQ(setting.LinesIn(1, ColourName::BackgroundProfilingG40).size(), 2U);
}

TEST(LoadPlot, NotesEachFileBeforeItIsOpened) {
  PlotSetting setting;
  setting.Select(1, {Cut(0, 0, 1, 1)}, {Cut(0, 0, 1, 1)});
  setting.System.Plot.KerfShown = true;
  setting.Drawing.LoadPlot(1);
  std::vector<std::string> opens;
  for (std::size_t i = 0; i < setting.Files.Log.size(); ++i) {
    const auto& entry = setting.Files.Log[i];
    if (!entry.starts_with("open ")) continue;
    opens.push_back(entry.substr(5));
    ASSERT_GT(i, 0U);
    EXPECT_EQ(setting.Files.Log[i - 1], "write C:\\T\\Service\\LastFile.txt");
  }
  EXPECT_EQ(opens, (std::vector<std::string>{"C:\\T\\Actvprg1.drw", "C:\\T\\Actvprg1.krw"}));
  EXPECT_NE(setting.Files.Files["C:\\T\\Service\\LastFile.txt"].find("Actvprg1.krw"),
            std::string::npos);
}

TEST(LoadPlot, ReadsTheRecordsByTheSlotsCountFromTheSecondOn) {
  PlotSetting setting;
  setting.Select(1, {Cut(0, 0, 1, 1), Cut(1, 1, 2, 2), Cut(2, 2, 3, 3)});
  setting.Program(1).DrawRecords = 3;
  setting.Drawing.LoadPlot(1);
  std::vector<std::string> reads;
  for (const auto& entry : setting.Files.Log) {
    if (entry.starts_with("read ")) reads.push_back(entry);
  }
  EXPECT_EQ(reads, (std::vector<std::string>{"read 2", "read 3"}));
}

TEST(LoadPlot, OfAHeaderAloneDrawsTheSheetOnly) {
  for (const int records : {1, 0, -5}) {
    PlotSetting setting;
    setting.Select(1, {Cut(0, 0, 1, 1)});
    setting.Program(1).DrawRecords = static_cast<std::int16_t>(records);
    setting.Drawing.LoadPlot(1);
    EXPECT_EQ(setting.Box1.CallsOf(CanvasCallKind::FilledBox).size(), 2U);
    EXPECT_TRUE(setting.LinesIn(1, ColourName::BackgroundProfilingG40).empty());
  }
}

TEST(LoadPlot, OfAFileThatEndsEarlyDrawsAsFarAsItGoes) {
  PlotSetting setting;
  setting.Select(1, {Cut(0, 0, 1, 1), Cut(1, 1, 2, 2)});
  setting.Program(1).DrawRecords = 32767;
  setting.Drawing.LoadPlot(1);
  EXPECT_EQ(setting.LinesIn(1, ColourName::BackgroundProfilingG40).size(), 2U);
}

TEST(LoadPlot, KerfFileIsNotReadAtAllUnlessShown) {
  PlotSetting setting;
  setting.Select(1, {Cut(0, 0, 1, 1)}, {Cut(0, 1, 1, 2)});
  setting.Drawing.LoadPlot(1);
  EXPECT_EQ(setting.Files.Opened(PlotSetting::Path(1, ".krw")), 0);
  setting.System.Plot.KerfShown = true;
  setting.Drawing.LoadPlot(1);
  EXPECT_EQ(setting.Files.Opened(PlotSetting::Path(1, ".krw")), 1);
}

TEST(LoadPlot, KerfPathLiesOverTheProgrammedPath) {
  PlotSetting setting;
  auto compensated = Cut(0, 1, 1, 2);
  compensated.KerfSide = 1;
  setting.Select(1, {Cut(0, 0, 1, 1)}, {compensated});
  setting.System.Plot.KerfShown = true;
  setting.Drawing.LoadPlot(1);
  EXPECT_EQ(setting.Box1.Calls().back().Ink, setting.Ink(ColourName::BackgroundProfilingG41));
  EXPECT_EQ(setting.LinesIn(1, ColourName::BackgroundProfilingG40).size(), 1U);
}

TEST(LoadPlot, MissingKerfFileIsPassedOver) {
  PlotSetting setting;
  setting.Select(1, {Cut(0, 0, 1, 1)});
  setting.Files.Files.erase(PlotSetting::Path(1, ".krw"));
  setting.System.Plot.KerfShown = true;
  setting.Drawing.LoadPlot(1);
  EXPECT_EQ(setting.LinesIn(1, ColourName::BackgroundProfilingG40).size(), 1U);
}

TEST(LoadPlot, DatumStandsOnlyOnAMachineWithoutClamps) {
  PlotSetting bare;
  bare.System.Colours.Set(ColourName::DatumMarker, 0x010203);
  bare.Select(1, {});
  bare.Drawing.LoadPlot(1);
  EXPECT_EQ(bare.LinesIn(1, ColourName::DatumMarker).size(), 2U);

  PlotSetting clamped;
  clamped.System.Colours.Set(ColourName::DatumMarker, 0x010203);
  clamped.System.Machine.ClampCount = 2;
  clamped.Select(1, {});
  clamped.Drawing.LoadPlot(1);
  EXPECT_TRUE(clamped.LinesIn(1, ColourName::DatumMarker).empty());
  EXPECT_EQ(clamped.LinesIn(1, ColourName::PlotBackground).size(), 2U) << "the old one goes";
}

TEST(LoadPlot, ZoomedViewOutlivesAReloadAndTheFitComesBackWithoutIt) {
  PlotSetting setting;
  setting.Select(1, {Cut(0, 0, 1, 1)});
  setting.Drawing.LoadPlot(1);
  const auto fit = setting.View(1);
  auto& view = setting.View(1);
  view.Corner1X = 100;
  view.Corner1Y = 400;
  view.Corner2X = 500;
  view.Corner2Y = 100;
  view.ViewZoomed = true;

  setting.Box1.Forget();
  setting.Drawing.KerfButtonChanged(true);
  const auto zoomed = setting.Box1.CallsOf(CanvasCallKind::Scale);
  ASSERT_EQ(zoomed.size(), 1U);
  EXPECT_EQ(zoomed[0].X1, 100);
  EXPECT_EQ(zoomed[0].X2, 500);
  EXPECT_EQ(view.PlotIconSize, 400.0 / 64);

  view.ViewZoomed = false;
  setting.Drawing.RefreshPlot(1);
  EXPECT_EQ(view.Corner1X, fit.Corner1X);
  EXPECT_FLOAT_EQ(view.Corner1Y, fit.Corner1Y);
  EXPECT_EQ(view.Corner2X, fit.Corner2X);
}

TEST(LoadPlot, ChordsFollowTheZoom) {
  PlotSetting setting;
  setting.Select(1, {Arc(500, 250, 50, 0, 180)});
  setting.Drawing.LoadPlot(1);
  const auto small = setting.LinesIn(1, ColourName::BackgroundProfilingG40).size();
  auto& view = setting.View(1);
  view.Corner1X = 450;
  view.Corner2X = 550;
  view.Corner1Y = 325;
  view.Corner2Y = 250;
  view.ViewZoomed = true;
  setting.Box1.Forget();
  setting.Drawing.LoadPlot(1);
  const auto big = setting.LinesIn(1, ColourName::BackgroundProfilingG40).size();
  EXPECT_GE(small, 16U);
  EXPECT_LE(small, 18U);
  EXPECT_GE(big, 32U);
}

TEST(LoadPlot, DrawsASlotThatIsNotOnShow) {
  PlotSetting setting;
  setting.Select(2, {Cut(0, 0, 1, 1)});
  setting.System.ActiveSlot = 1;
  setting.Drawing.LoadPlot(2);
  EXPECT_EQ(setting.LinesIn(2, ColourName::BackgroundProfilingG40).size(), 1U);
  EXPECT_TRUE(setting.Box1.Calls().empty());
}

TEST(LoadPlot, SheetBeyondAllNumbersLeavesTheCanvasFitForTheNextProgram) {
  PlotSetting setting;
  setting.Select(1, {Cut(0, 0, 1, 1)});
  setting.Program(1).SheetX = std::numeric_limits<float>::infinity();
  setting.Drawing.LoadPlot(1);
  EXPECT_TRUE(setting.Box1.CallsOf(CanvasCallKind::Scale).empty());
  setting.Program(1).SheetX = 1000;
  setting.Drawing.LoadPlot(1);
  EXPECT_EQ(setting.View(1).Corner2X, 1060);
  EXPECT_EQ(setting.View(1).Corner1Y, 810);
}

TEST(RefreshPlot, StartsTheRunTimeAgainAndLoadPlotLeavesIt) {
  PlotSetting setting;
  setting.System.State.RunSeconds = 12;
  setting.Drawing.LoadPlot(1);
  EXPECT_EQ(setting.System.State.RunSeconds, 12);
  setting.Drawing.RefreshPlot(1);
  EXPECT_EQ(setting.System.State.RunSeconds, 0);
}

TEST(LoadPlot, LimitsComeBackWithThePlot) {
  PlotSetting setting;
  setting.Select(1, {Cut(0, 0, 1, 1)});
  setting.System.Plot.LimitsShown = true;
  setting.Drawing.LoadPlot(1);
  const auto rect = setting.Box1.GetOverlay(Overlay::LimitRect);
  EXPECT_TRUE(rect.Visible);
  EXPECT_EQ(rect.From.Y, 520) << "the canvas had its new scale when the rectangle was placed";
}

TEST(KerfButton, DuringACycleChangesNothingUntilTheNextRedraw) {
  PlotSetting setting;
  setting.Select(1, {Cut(0, 0, 1, 1)}, {Cut(0, 1, 1, 2)});
  setting.Drawing.LoadPlot(1);
  setting.Box1.Forget();
  setting.System.State.MachineRunning = true;
  setting.Drawing.KerfButtonChanged(true);
  EXPECT_TRUE(setting.Box1.Calls().empty());
  EXPECT_TRUE(setting.System.Plot.KerfShown);
  setting.Drawing.RefreshPlot(1);
  EXPECT_EQ(setting.LinesIn(1, ColourName::BackgroundProfilingG40).size(), 2U);
}

TEST(KerfButton, RedrawsTheActiveSlotAndLeavesTheRunTime) {
  PlotSetting setting;
  setting.Select(2, {Cut(0, 0, 1, 1)}, {Cut(0, 1, 1, 2)});
  setting.System.ActiveSlot = 2;
  setting.System.State.RunSeconds = 7;
  setting.Drawing.KerfButtonChanged(true);
  EXPECT_EQ(setting.LinesIn(2, ColourName::BackgroundProfilingG40).size(), 2U);
  EXPECT_TRUE(setting.Box1.Calls().empty());
  EXPECT_EQ(setting.System.State.RunSeconds, 7);
  setting.Box2.Forget();
  setting.Drawing.KerfButtonChanged(false);
  EXPECT_EQ(setting.LinesIn(2, ColourName::BackgroundProfilingG40).size(), 1U);
}

TEST(LimitsButton, WorksOnBothSlotsWithoutARedraw) {
  PlotSetting setting;
  setting.Select(1, {});
  setting.Select(2, {});
  setting.Drawing.LoadPlot(1);
  setting.Drawing.LoadPlot(2);
  setting.Box1.Forget();
  setting.Box2.Forget();
  setting.Drawing.LimitsButtonChanged(true);
  EXPECT_TRUE(setting.Box1.GetOverlay(Overlay::LimitRect).Visible);
  EXPECT_TRUE(setting.Box2.GetOverlay(Overlay::LimitRect).Visible);
  setting.Drawing.LimitsButtonChanged(false);
  EXPECT_FALSE(setting.Box1.GetOverlay(Overlay::LimitRect).Visible);
  EXPECT_TRUE(setting.Box1.Calls().empty());
  EXPECT_TRUE(setting.Box2.Calls().empty());
}

TEST(LimitsButton, WorksDuringACycleToo) {
  PlotSetting setting;
  setting.Select(1, {});
  setting.Drawing.LoadPlot(1);
  setting.System.State.MachineRunning = true;
  setting.Drawing.LimitsButtonChanged(true);
  EXPECT_TRUE(setting.Box1.GetOverlay(Overlay::LimitRect).Visible);
}

/// Buttons whose setting calls their change procedure, as two-state buttons do.
class LinkedButtons final : public PlotButtons {
 public:
  explicit LinkedButtons(PlotSetting& setting) : setting_(setting) {}
  void SetKerfButton(bool pressed) override {
    EXPECT_TRUE(setting_.System.Plot.PlotInitialising);
    Kerf = pressed;
    setting_.Drawing.KerfButtonChanged(pressed);
  }
  void SetLimitsButton(bool pressed) override {
    Limits = pressed;
    setting_.Drawing.LimitsButtonChanged(pressed);
  }
  bool Kerf = true;
  bool Limits = true;

 private:
  PlotSetting& setting_;
};

TEST(PlotSwitchesAtStart, ComeUpWithoutTheirEvents) {
  PlotSetting setting;
  setting.Select(1, {});
  setting.System.Plot.KerfShown = true;
  setting.System.Plot.LimitsShown = true;
  setting.System.Console.PlotKeysActive = true;
  setting.System.Console.PlotKeyMode = 4;
  LinkedButtons buttons(setting);
  setting.Drawing.LoadPlotConfig(buttons);
  EXPECT_FALSE(buttons.Kerf);
  EXPECT_FALSE(buttons.Limits);
  EXPECT_FALSE(setting.System.Plot.KerfShown);
  EXPECT_FALSE(setting.System.Plot.LimitsShown);
  EXPECT_FALSE(setting.System.Plot.PlotInitialising);
  EXPECT_FALSE(setting.System.Console.PlotKeysActive);
  EXPECT_EQ(setting.System.Console.PlotKeyMode, 0);
  EXPECT_TRUE(setting.Box1.Calls().empty()) << "no redraw";
}

struct PlotFileCase {
  const char* Name;
  const char* Text;
  float Width;
  bool Icon;
  int Style;
};

class PlotFile : public ::testing::TestWithParam<PlotFileCase> {};

TEST_P(PlotFile, GivesTheLookOfTheTrace) {
  PlotSetting setting;
  setting.System.Plot.RealTimeWidth = 7;
  setting.System.Plot.ShowMovementIcon = true;
  setting.System.Plot.MovementStyle = 0;
  if (GetParam().Text != nullptr) setting.Files.Files["C:\\T\\Plot.cfg"] = GetParam().Text;
  LinkedButtons buttons(setting);
  setting.Drawing.LoadPlotConfig(buttons);
  EXPECT_EQ(setting.System.Plot.RealTimeWidth, GetParam().Width);
  EXPECT_EQ(setting.System.Plot.ShowMovementIcon, GetParam().Icon);
  EXPECT_EQ(setting.System.Plot.MovementStyle, GetParam().Style);
}

INSTANTIATE_TEST_SUITE_P(
    Texts, PlotFile,
    ::testing::Values(PlotFileCase{"MissingGivesTheDefaults", nullptr, 1, false, -999},
                      PlotFileCase{"TooWideIsAHundred",
                                   "Width: 250\r\nIcon: Yes\r\nMovement: Dotted\r\n", 100, true, 2},
                      PlotFileCase{"TooThinIsOne", "Width: 0.5\r\nIcon: n\r\nMovement: solid\r\n",
                                   1, false, 0},
                      PlotFileCase{"NoNumberIsOne", "Width: wide\r\nmaybe\r\n\r\n", 1, true, -999},
                      PlotFileCase{"LinesWithoutColonCountWhole", "3.6\ny\nd\n", 3.6F, true, 2}),
    [](const auto& each) { return each.param.Name; });

TEST(PlotButtonsBeingReset, ChangeNothing) {
  PlotSetting setting;
  setting.System.Plot.PlotInitialising = true;
  setting.Drawing.KerfButtonChanged(true);
  setting.Drawing.LimitsButtonChanged(true);
  EXPECT_FALSE(setting.System.Plot.KerfShown);
  EXPECT_FALSE(setting.System.Plot.LimitsShown);
  EXPECT_TRUE(setting.Box1.Calls().empty());
}

}  // namespace
}  // namespace torvane::graphics
