// The great parts of the main screen, for it and for the screens that open over it.
#pragma once

#include "toolkit/Area.h"
#include "toolkit/Metrics.h"

namespace torvane::console {

/// Width of the box of figures, pixels of the drawing.
inline constexpr int PositionBoxWidth = 264;

/// Height of the key strip at the bottom.
[[nodiscard]] inline int KeyStripHeight(const toolkit::Metrics& metrics) {
  return metrics.KeyHeight + 2 * metrics.Gap;
}

/// Between header and key strip, left of the figures.
[[nodiscard]] inline toolkit::Area PlotArea(const toolkit::Metrics& metrics) {
  toolkit::Area rest{0, 0, metrics.DeskWidth, metrics.DeskHeight};
  (void)toolkit::TakeTop(rest, metrics.TitleHeight);
  (void)toolkit::TakeBottom(rest, KeyStripHeight(metrics));
  rest = rest.Inset(metrics.Gap);
  (void)toolkit::TakeRight(rest, metrics.Px(PositionBoxWidth), metrics.Gap);
  return rest;
}

/// Height of the two lines of text at the foot of the plot area, with the gaps above and between.
[[nodiscard]] inline int TextLinesHeight(const toolkit::Metrics& metrics) {
  return 2 * metrics.TextStrip + metrics.Gap + metrics.Gap / 2;
}

}  // namespace torvane::console
