#include "core/PlotFile.h"

#include <algorithm>

#include "core/ConfigText.h"
#include "core/General.h"

namespace torvane::core {

namespace {

/// Solid, dotted, or no trace of rapid moves at all.
std::int16_t StyleOf(std::string_view text) {
  if (text.starts_with('S')) return 0;
  return text.starts_with('D') ? 2 : -999;
}

}  // namespace

void ResetPlotLook(PlotSettings& plot) {
  const PlotSettings fresh;
  plot.RealTimeWidth = fresh.RealTimeWidth;
  plot.ShowMovementIcon = fresh.ShowMovementIcon;
  plot.MovementStyle = fresh.MovementStyle;
}

void ReadPlotFile(std::string_view text, PlotSettings& plot) {
  LineReader lines(text, {});
  if (const auto width = lines.Optional()) {
    plot.RealTimeWidth = ToSingle(std::clamp(LeadingNumber(AfterColon(*width)), 1.0, 100.0));
  }
  if (const auto icon = lines.Optional()) plot.ShowMovementIcon = IsYes(AfterColon(*icon));
  if (const auto style = lines.Optional()) {
    plot.MovementStyle = StyleOf(UpperCase(AfterColon(*style)));
  }
}

}  // namespace torvane::core
