// Plot.cfg and the switches of the plot that the whole console shares.
#pragma once

#include <array>
#include <cstdint>

namespace torvane::core {

struct PlotSettings {
  float RealTimeWidth = 1;  ///< pixels, 1 to 100
  bool ShowMovementIcon = false;
  std::int16_t MovementStyle = -999;  ///< 0 solid, 2 dotted, -999 not drawn
  bool LimitsShown = false;
  bool KerfShown = false;
  bool PlotInitialising = false;
};

/// The view of one slot's canvas, in program units.
struct PlotView {
  float Corner1X = 0;  ///< ViewCorner1, top left
  float Corner1Y = 0;
  float Corner2X = 0;  ///< ViewCorner2, bottom right
  float Corner2Y = 0;
  bool ViewZoomed = false;
  double PlotIconSize = 0;  ///< a sixty-fourth of the view's width
};

}  // namespace torvane::core
