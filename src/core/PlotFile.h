// Plot.cfg: how the live trace looks.
#pragma once

#include <string_view>

#include "core/PlotSettings.h"

namespace torvane::core {

/// `RealTimeWidth`, `ShowMovementIcon` and `MovementStyle` as they are without the file.
void ResetPlotLook(PlotSettings& plot);

/// The three lines; a shorter text leaves the later fields.
void ReadPlotFile(std::string_view text, PlotSettings& plot);

}  // namespace torvane::core
