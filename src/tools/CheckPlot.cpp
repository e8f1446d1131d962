#include "tools/CheckPlot.h"

#include <filesystem>

#include "core/General.h"
#include "toolkit/RasterCanvas.h"
#include "toolkit/SvgCanvas.h"

namespace torvane::tools {

namespace {

template <typename Canvas>
std::string DrawOn(PictureSize size, const core::ColourTable& colours,
                   const core::MachineData& machine, const graphics::ProgramPlot& plot) {
  Canvas canvas(size.Width, size.Height);
  graphics::DrawProgram(canvas, colours, machine, plot);
  return canvas.FileBytes().toStdString();
}

}  // namespace

std::string DrawPlot(const std::string& path, PictureSize size, const core::ColourTable& colours,
                     const core::MachineData& machine, const graphics::ProgramPlot& plot) {
  const bool vector = core::EqualNoCase(std::filesystem::path(path).extension().string(), ".svg");
  const auto draw = vector ? DrawOn<toolkit::SvgCanvas> : DrawOn<toolkit::RasterCanvas>;
  return draw(size, colours, machine, plot);
}

}  // namespace torvane::tools
