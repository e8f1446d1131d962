#include "graphics/ProgramPlot.h"

#include <cmath>

#include "graphics/PlotModel.h"
#include "graphics/RecordPainter.h"
#include "graphics/RestartMarks.h"
#include "graphics/SheetPainter.h"
#include "platform/VectorState.h"

namespace torvane::graphics {

namespace {

void DrawPath(platform::Canvas& canvas, const core::ColourTable& colours,
              std::span<const partprogram::DrawRecord> records) {
  if (records.empty()) return;
  RecordPainter painter(canvas, colours);
  platform::ClearVectorState();
  for (const auto& record : records.subspan(1)) {
    painter.Draw(record, PaintMode::Background);
  }
}

}  // namespace

void DrawProgram(platform::Canvas& canvas, const core::ColourTable& colours,
                 const core::MachineData& machine, const ProgramPlot& plot) {
  SetUpPlotBox(canvas, colours);
  canvas.Cls();
  const auto view = FitSheet(machine, plot.SheetX, plot.SheetY,
                             {std::abs(canvas.ScaleWidth()), std::abs(canvas.ScaleHeight())});
  if (!ViewDrawable(view)) return;
  canvas.Scale({view.Corner1X, view.Corner1Y}, {view.Corner2X, view.Corner2Y});
  DrawSheet(canvas, colours, true, machine.ClampCount == 0, plot.SheetX, plot.SheetY);
  DrawPath(canvas, colours, plot.Programmed);
  DrawPath(canvas, colours, plot.Compensated);
  if (plot.Highlighted != nullptr) {
    DrawPlotRecord(canvas, colours, *plot.Highlighted, PaintMode::Highlight);
  }
  if (plot.Marks) ShowRestartMarks(canvas, *plot.Marks, IconSizeOf(view));
}

}  // namespace torvane::graphics
