// The plot of one program without slots and files: records in memory on any canvas, in the drawing
// code of the console.
#pragma once

#include <optional>
#include <span>

#include "core/ColourTable.h"
#include "core/MachineData.h"
#include "graphics/RestartMarks.h"
#include "partprogram/DrawRecord.h"
#include "platform/Canvas.h"

namespace torvane::graphics {

/// What to draw. Sizes in mm.
struct ProgramPlot {
  float SheetX = 0;
  float SheetY = 0;
  std::span<const partprogram::DrawRecord> Programmed;   ///< of ".drw", the header first
  std::span<const partprogram::DrawRecord> Compensated;  ///< of ".krw", likewise; empty: not drawn
  const partprogram::DrawRecord* Highlighted = nullptr;  ///< drawn over the rest
  std::optional<RestartMarks> Marks = std::nullopt;      ///< over all of it
};

/// Fits the sheet to the canvas, then draws sheet, datum and paths as a redraw of the console does.
void DrawProgram(platform::Canvas& canvas, const core::ColourTable& colours,
                 const core::MachineData& machine, const ProgramPlot& plot);

}  // namespace torvane::graphics
