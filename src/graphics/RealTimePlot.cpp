#include "graphics/RealTimePlot.h"

#include <utility>

#include "core/General.h"
#include "graphics/MovementIcon.h"
#include "link/Variables.h"

namespace torvane::graphics {

namespace {

using core::ColourName;
using platform::PenStyle;

constexpr int PlainStyle = static_cast<int>(PenStyle::Solid);
constexpr int PlainWidth = 1;

/// Some hours of a head that never rests; a longer trace begins anew.
constexpr std::size_t MostSegments = 500000;

}  // namespace

void TraceLine(platform::Canvas& canvas, double x1, double y1, double x2, double y2,
               platform::Colour colour, int style, int width) {
  if (style < 0) return;
  canvas.DrawStyle(static_cast<PenStyle>(style));
  canvas.DrawWidth(width);
  canvas.DrawCasing(true);
  canvas.Line(x1, y1, x2, y2, colour);
  canvas.DrawCasing(false);
  canvas.DrawWidth(PlainWidth);
  canvas.DrawStyle(PenStyle::Solid);
}

RealTimePlotter::RealTimePlotter(core::System& system, DrawingModule& drawing, Links links)
    : system_(system), drawing_(drawing), links_(std::move(links)) {}

void RealTimePlotter::PlaceMovementIcon(core::Slot slot, double x, double y, bool show) {
  if (auto* const box = drawing_.PlotBox(slot)) {
    const double size = system_.Views[slot].PlotIconSize;
    graphics::PlaceMovementIcon(*box, size, x, y, show);
  }
}

void RealTimePlotter::HideIcons() {
  for (const core::Slot slot : core::BothSlots) PlaceMovementIcon(slot, 0, 0, false);
}

void RealTimePlotter::RealTimePlot() {
  auto& state = system_.State;
  auto* box = drawing_.PlotBox(system_.ActiveSlot);
  if (!system_.Link.TrioLinkEnabled || box == nullptr || !system_.Active().Selected) return;

  if (state.MachineRunning && !state.MachineWasRunning) drawing_.RefreshPlot(system_.ActiveSlot);
  state.RunSeconds = links_.GetRspnsSngl(link::Variable::RunTime, 2);
  // The wait for the reply lets the operator in, who may have gone to the other slot.
  box = drawing_.PlotBox(system_.ActiveSlot);
  if (box == nullptr) return;

  if (state.MachineRunning) {
    FollowHead(*box);
  } else if (state.MachineWasRunning || MovementIconVisible(*box)) {
    HideIcons();
  }
}

void RealTimePlotter::Draw(platform::Canvas& box, const TraceSegment& segment) {
  TraceLine(box, segment.X1, segment.Y1, segment.X2, segment.Y2, segment.Colour, segment.Style,
            segment.Width);
}

void RealTimePlotter::Remember(core::Slot slot, const TraceSegment& segment) {
  Trace& trace = traces_[slot];
  const int redraws = drawing_.Redraws(slot);
  if (std::exchange(trace.Redraws, redraws) != redraws) trace.Segments.clear();
  if (trace.Segments.size() >= MostSegments) trace.Segments.clear();
  trace.Segments.push_back(segment);
}

void RealTimePlotter::RedrawWithTrace(core::Slot slot) {
  auto* const box = drawing_.PlotBox(slot);
  if (box == nullptr) return;
  Trace& trace = traces_[slot];
  const bool onCanvas = trace.Redraws == drawing_.Redraws(slot);
  drawing_.LoadPlot(slot);
  if (!onCanvas) return;
  trace.Redraws = drawing_.Redraws(slot);
  for (const TraceSegment& segment : trace.Segments) Draw(*box, segment);
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
  const TraceSegment segment{state.LastXPosition,
                             state.LastYPosition,
                             state.XPosition,
                             state.YPosition,
                             colour,
                             style,
                             width};
  Draw(box, segment);
  if (style >= 0) Remember(system_.ActiveSlot, segment);
}

}  // namespace torvane::graphics
