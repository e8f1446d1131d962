// The plot of a checked program as a picture, by the console's own drawing code.
#pragma once

#include <string>

#include "core/ColourTable.h"
#include "core/MachineData.h"
#include "graphics/ProgramPlot.h"
#include "tools/QtOutput.h"

namespace torvane::tools {

/// QtOutput::DrawPlot.
[[nodiscard]] std::string DrawPlot(const std::string& path, PictureSize size,
                                   const core::ColourTable& colours,
                                   const core::MachineData& machine,
                                   const graphics::ProgramPlot& plot);

}  // namespace torvane::tools
