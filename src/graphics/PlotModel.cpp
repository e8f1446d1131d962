#include "graphics/PlotModel.h"

#include <cmath>

namespace torvane::graphics {

namespace {

/// Free room around the sheet, in program units.
constexpr double FitMargin = 10;

/// The icon's share of the view's width.
constexpr double IconsAcross = 64;

}  // namespace

core::PlotView FitSheet(const core::MachineData& machine, float sheetX, float sheetY,
                        CanvasSize canvas, const core::PlotView& old) {
  const double minX = machine.TravelMinX;
  const double minY = machine.TravelMinY;
  const double x0 = minX - FitMargin;
  const double x1 = std::abs(minX) + sheetX + FitMargin;
  const double y0 = minY - FitMargin;
  const double y1 = std::abs(minY) + sheetY + FitMargin;

  const double boxAspect = canvas.Width / canvas.Height;
  const double sheetAspect = (x1 - x0) / (y1 - y0);
  const bool fillsWidth = sheetAspect >= boxAspect;
  // The room that is left over goes to the far end of the axis that has it.
  const double farX = fillsWidth ? x1 : x0 + boxAspect * (y1 - y0);
  const double farY = fillsWidth ? y0 + (x1 - x0) / boxAspect : y1;
  const bool yUp = machine.YDirection == 1;

  core::PlotView view = old;
  view.Corner1X = static_cast<float>(x0);
  view.Corner1Y = static_cast<float>(yUp ? farY : y0);
  view.Corner2X = static_cast<float>(farX);
  view.Corner2Y = static_cast<float>(yUp ? y0 : farY);
  return view;
}

double IconSizeOf(const core::PlotView& view) {
  return std::abs(static_cast<double>(view.Corner2X) - view.Corner1X) / IconsAcross;
}

bool ViewEmpty(const core::PlotView& view) {
  return view.Corner1X == 0 && view.Corner1Y == 0 && view.Corner2X == 0 && view.Corner2Y == 0;
}

bool ViewDrawable(const core::PlotView& view) {
  return std::isfinite(view.Corner1X) && std::isfinite(view.Corner1Y) &&
         std::isfinite(view.Corner2X) && std::isfinite(view.Corner2Y) &&
         view.Corner1X != view.Corner2X && view.Corner1Y != view.Corner2Y;
}

}  // namespace torvane::graphics
