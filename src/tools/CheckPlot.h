// The plot of a checked program as a picture, by the console's own drawing code.
#pragma once

#include <string>

#include "core/ColourTable.h"
#include "core/MachineData.h"
#include "graphics/ProgramPlot.h"

namespace torvane::tools {

/// Pixels.
struct PictureSize {
  int Width = 1200;
  int Height = 900;
};

/// True for a name that ends in ".png" or ".svg", in any case.
[[nodiscard]] bool IsPictureName(const std::string& path);

/// Draws to a PNG or an SVG, by the ending of the native path. Throws RuntimeFault where the file
/// cannot be written. Works in any thread, without a display.
void SavePlot(const std::string& path, PictureSize size, const core::ColourTable& colours,
              const core::MachineData& machine, const graphics::ProgramPlot& plot);

}  // namespace torvane::tools
