// The trace of the head over the plot, one segment a poll tick, and the icon at the head.
#pragma once

#include <functional>
#include <string_view>

#include "core/System.h"
#include "graphics/DrawingModule.h"
#include "platform/Canvas.h"
#include "supervision/PollScreens.h"

namespace torvane::graphics {

/// One segment in its own pen; the plain pen, solid and one pixel wide, stands again behind it.
/// `style` 0 solid, 2 dotted; a negative one draws nothing. `width` in pixels, from 1.
void TraceLine(platform::Canvas& canvas, double x1, double y1, double x2, double y2,
               platform::Colour colour, int style, int width);

/// The stage of the poll that follows the head. It runs before the positions are read, so the trace
/// runs one tick behind the figures.
class RealTimePlotter final : public supervision::PlotStage {
 public:
  struct Links {
    /// A typed query: expression and decimals; 0 after a failure.
    std::function<float(std::string_view expression, int decimals)> GetRspnsSngl;
    /// Brings the slot's canvas forward on the main screen.
    std::function<void(int slot)> ShowPlotBox;
  };

  RealTimePlotter(core::System& system, DrawingModule& drawing, Links links);

  /// One tick. The start of a cycle repaints the plot, and only that wipes the trace before it.
  void RealTimePlot() override;

  void RefreshPlot(int slot) override { drawing_.RefreshPlot(slot); }
  void ShowPlotBox(int slot) override { links_.ShowPlotBox(slot); }

  /// Moves the slot's icon to (x, y), mm, or hides it.
  void PlaceMovementIcon(int slot, double x, double y, bool show);

 private:
  void HideIcons();
  void FollowHead(platform::Canvas& box);

  core::System& system_;
  DrawingModule& drawing_;
  Links links_;
};

}  // namespace torvane::graphics
