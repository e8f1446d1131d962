#include <gtest/gtest.h>

#include "PlotSetting.h"
#include "graphics/ProgramPlot.h"

namespace torvane::graphics {
namespace {

using tests::Arc;
using tests::CanvasCallKind;
using tests::Cut;
using tests::MoveTo;
using tests::PlotSetting;
using tests::RecordingCanvas;
using tests::SheetRecord;

TEST(PlotWithoutAConsole, DrawsWhatTheConsoleDraws) {
  PlotSetting setting;
  auto compensated = Arc(300, 200, 41, 0, -200);
  compensated.KerfSide = 1;
  const std::vector<partprogram::DrawRecord> programmed = {
      SheetRecord(), MoveTo(0, 0, 10, 10), Cut(10, 10, 20, 10), Arc(300, 200, 40, 0, -200)};
  const std::vector<partprogram::DrawRecord> kerf = {SheetRecord(), compensated};
  setting.Select(1, {programmed.begin() + 1, programmed.end()}, {kerf.begin() + 1, kerf.end()});
  setting.System.Plot.KerfShown = true;
  setting.Drawing.LoadPlot(1);

  RecordingCanvas canvas(800, 600);
  DrawProgram(canvas, setting.System.Colours, setting.System.Machine,
              {1000, 500, programmed, kerf});
  auto calls = canvas.Calls();
  ASSERT_FALSE(calls.empty());
  EXPECT_EQ(calls.front().Kind, CanvasCallKind::Background);
  calls.erase(calls.begin());
  EXPECT_EQ(calls, setting.Box1.Calls());
}

TEST(PlotWithoutAConsole, OfNoRecordsIsTheSheet) {
  const core::MachineData machine;
  RecordingCanvas canvas(800, 600);
  DrawProgram(canvas, core::ColourTable(), machine, {100, 50, {}, {}});
  EXPECT_EQ(canvas.CallsOf(CanvasCallKind::FilledBox).size(), 2U);
}

TEST(PlotWithoutAConsole, OfASheetBeyondAllNumbersStaysBlank) {
  const core::MachineData machine;
  RecordingCanvas canvas(800, 600);
  DrawProgram(canvas, core::ColourTable(), machine,
              {std::numeric_limits<float>::infinity(), 50, {}, {}});
  EXPECT_TRUE(canvas.CallsOf(CanvasCallKind::Scale).empty());
  EXPECT_TRUE(canvas.CallsOf(CanvasCallKind::FilledBox).empty());
}

}  // namespace
}  // namespace torvane::graphics
