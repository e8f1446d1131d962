// The sheet with its datum, the rectangle of the soft limits, and the colours of the shapes that
// lie over a plot.
#pragma once

#include "core/ActiveProgram.h"
#include "core/ColourTable.h"
#include "core/MachineData.h"
#include "core/PlotSettings.h"
#include "platform/Canvas.h"

namespace torvane::graphics {

/// The sheet from the program's zero to (sizeX, sizeY), mm, over whatever an earlier paint left;
/// the datum marker on its corner where `showDatum`. Nothing when `draw` is false. The marker does
/// not follow the zoom.
void DrawSheet(platform::Canvas& canvas, const core::ColourTable& colours, bool draw,
               bool showDatum, double sizeX, double sizeY);

/// Places or hides LimitRect. It shows where `limitsShown` and the slot has a view and a selected
/// program with a sheet; asked to show anything else, it hides.
void ShowLimits(platform::Canvas& canvas, const core::MachineData& machine,
                const core::PlotView& view, const core::ActiveProgram& program, bool limitsShown,
                bool show);

/// Background and shapes of a new canvas in their colours, all shapes hidden.
void SetUpPlotBox(platform::Canvas& canvas, const core::ColourTable& colours);

}  // namespace torvane::graphics
