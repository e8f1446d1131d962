#include "tools/CheckPlot.h"

#include <filesystem>

#include "core/General.h"
#include "platform/RuntimeFault.h"
#include "toolkit/RasterCanvas.h"
#include "toolkit/SvgCanvas.h"

namespace torvane::tools {

namespace {

bool HasEnding(const std::string& path, std::string_view ending) {
  return core::EqualNoCase(std::filesystem::path(path).extension().string(), ending);
}

template <typename Canvas>
void SaveOn(const std::string& path, PictureSize size, const core::ColourTable& colours,
            const core::MachineData& machine, const graphics::ProgramPlot& plot) {
  Canvas canvas(size.Width, size.Height);
  graphics::DrawProgram(canvas, colours, machine, plot);
  if (!canvas.Save(path)) throw platform::RuntimeFault(path, "cannot be written");
}

}  // namespace

void SavePlot(const std::string& path, PictureSize size, const core::ColourTable& colours,
              const core::MachineData& machine, const graphics::ProgramPlot& plot) {
  const auto save =
      HasEnding(path, ".svg") ? SaveOn<toolkit::SvgCanvas> : SaveOn<toolkit::RasterCanvas>;
  save(path, size, colours, machine, plot);
}

}  // namespace torvane::tools
