#include "graphics/RealTimePlot.h"

#include <utility>

#include "core/General.h"
#include "graphics/MovementIcon.h"

namespace torvane::graphics {

namespace {

using core::ColourName;
using platform::PenStyle;

constexpr int PlainStyle = static_cast<int>(PenStyle::Solid);
constexpr int PlainWidth = 1;

}  // namespace

void TraceLine(platform::Canvas& canvas, double x1, double y1, double x2, double y2,
               platform::Colour colour, int style, int width) {
  if (style < 0) return;
  canvas.DrawStyle(static_cast<PenStyle>(style));
  canvas.DrawWidth(width);
  canvas.Line(x1, y1, x2, y2, colour);
  canvas.DrawWidth(PlainWidth);
  canvas.DrawStyle(PenStyle::Solid);
}

RealTimePlotter::RealTimePlotter(core::System& system, DrawingModule& drawing, Links links)
    : system_(system), drawing_(drawing), links_(std::move(links)) {}

void RealTimePlotter::PlaceMovementIcon(int slot, double x, double y, bool show) {
  if (auto* const box = drawing_.PlotBox(slot)) {
    const double size = system_.Views[static_cast<std::size_t>(slot)].PlotIconSize;
    graphics::PlaceMovementIcon(*box, size, x, y, show);
  }
}

void RealTimePlotter::HideIcons() {
  for (const int slot : {1, 2}) PlaceMovementIcon(slot, 0, 0, false);
}

void RealTimePlotter::RealTimePlot() {
  auto& state = system_.State;
  auto* box = drawing_.PlotBox(system_.ActiveSlot);
  if (!system_.Link.TrioLinkEnabled || box == nullptr || !system_.Active().Selected) return;

  if (state.MachineRunning && !state.MachineWasRunning) drawing_.RefreshPlot(system_.ActiveSlot);
  state.RunSeconds = links_.GetRspnsSngl("VR(52)", 2);
  // The wait for the reply lets the operator in, who may have gone to the other slot.
  box = drawing_.PlotBox(system_.ActiveSlot);
  if (box == nullptr) return;

  if (state.MachineRunning) {
    FollowHead(*box);
  } else if (state.MachineWasRunning || MovementIconVisible(*box)) {
    HideIcons();
  }
}

void RealTimePlotter::FollowHead(platform::Canvas& box) {
  const auto& state = system_.State;
  const auto& plot = system_.Plot;
  const bool moved =
      state.XPosition != state.LastXPosition || state.YPosition != state.LastYPosition;
  if (plot.ShowMovementIcon && (moved || !MovementIconVisible(box))) {
    PlaceMovementIcon(system_.ActiveSlot, state.XPosition, state.YPosition, true);
  }
  if (!moved) return;
  // A cut only where the beam was on at both ends of the segment.
  const bool cut = state.BeamOn && state.BeamWasOn;
  const int style = cut ? PlainStyle : plot.MovementStyle;
  const int width = cut ? core::RoundToInt16(plot.RealTimeWidth) : PlainWidth;
  const auto colour =
      system_.Colours[cut ? ColourName::RealTimeProfiling : ColourName::RealTimeMovement];
  TraceLine(box, state.LastXPosition, state.LastYPosition, state.XPosition, state.YPosition, colour,
            style, width);
}

}  // namespace torvane::graphics
