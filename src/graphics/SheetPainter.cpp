#include "graphics/SheetPainter.h"

#include <array>
#include <optional>

#include "graphics/PlotModel.h"

namespace torvane::graphics {

namespace {

using core::ColourName;
using platform::Overlay;

/// Half the size of the datum marker, in program units at any zoom.
constexpr double DatumSize = 5;

void DrawDatum(platform::Canvas& canvas, platform::Colour colour) {
  canvas.Circle(0, 0, DatumSize, colour);
  canvas.Line(-DatumSize, 0, DatumSize, 0, colour);
  canvas.Line(0, -DatumSize, 0, DatumSize, colour);
}

struct OverlayColours {
  Overlay Shape;
  ColourName Border;
  std::optional<ColourName> Fill;
};

constexpr std::array<OverlayColours, static_cast<std::size_t>(Overlay::Count)> ShapeColours = {{
    {Overlay::SheetRect, ColourName::SheetBoundry, ColourName::SheetFill},
    {Overlay::LimitRect, ColourName::PunchingZones, std::nullopt},
    {Overlay::ZoomRect, ColourName::PlotCursor, std::nullopt},
    {Overlay::CrossLine1, ColourName::PlotCursor, std::nullopt},
    {Overlay::CrossLine2, ColourName::PlotCursor, std::nullopt},
    {Overlay::IconShape, ColourName::ProfilerMovementIcon, std::nullopt},
    {Overlay::IconLine1, ColourName::ProfilerMovementIcon, std::nullopt},
    {Overlay::IconLine2, ColourName::ProfilerMovementIcon, std::nullopt},
    {Overlay::TravelLine1, ColourName::RealTimeMovement, std::nullopt},
    {Overlay::TravelLine2, ColourName::RealTimeMovement, std::nullopt},
    {Overlay::EntryLine1, ColourName::HighlightedDrawing, std::nullopt},
    {Overlay::EntryLine2, ColourName::HighlightedDrawing, std::nullopt},
}};

}  // namespace

void DrawSheet(platform::Canvas& canvas, const core::ColourTable& colours, bool draw,
               bool showDatum, double sizeX, double sizeY) {
  if (!draw) return;
  // The old datum goes on any machine, also where no new one is drawn.
  DrawDatum(canvas, colours[ColourName::PlotBackground]);
  canvas.FilledBox(0, 0, sizeX, sizeY, colours[ColourName::PlotBackground]);
  canvas.FilledBox(0, 0, sizeX, sizeY, colours[ColourName::SheetFill]);
  canvas.Box(0, 0, sizeX, sizeY, colours[ColourName::SheetBoundry]);
  if (showDatum) DrawDatum(canvas, colours[ColourName::DatumMarker]);
}

void ShowLimits(platform::Canvas& canvas, const core::MachineData& machine,
                const core::PlotView& view, const core::ActiveProgram& program, bool limitsShown,
                bool show) {
  const bool valid =
      !ViewEmpty(view) && program.SheetX != 0 && program.SheetY != 0 && program.Selected;
  auto rect = canvas.GetOverlay(Overlay::LimitRect);
  if (show && valid) {
    const bool yUp = canvas.ScaleHeight() < 0;
    rect.From = {machine.TravelMinX, yUp ? machine.TravelMaxY : machine.TravelMinY};
    rect.To = {machine.TravelMaxX, yUp ? machine.TravelMinY : machine.TravelMaxY};
  }
  rect.Visible = show && valid && limitsShown;
  canvas.SetOverlay(Overlay::LimitRect, rect);
}

void SetUpPlotBox(platform::Canvas& canvas, const core::ColourTable& colours) {
  canvas.SetBackground(colours[ColourName::PlotBackground]);
  for (const auto& row : ShapeColours) {
    auto shape = canvas.GetOverlay(row.Shape);
    shape.Visible = false;
    shape.Border = colours[row.Border];
    shape.Filled = row.Fill.has_value();
    if (row.Fill) shape.Fill = colours[*row.Fill];
    canvas.SetOverlay(row.Shape, shape);
  }
}

}  // namespace torvane::graphics
