// The trace of the head over the plot, one segment a poll tick, and the icon at the head.
#pragma once

#include <array>
#include <functional>
#include <string_view>
#include <vector>

#include "core/Slot.h"
#include "core/System.h"
#include "graphics/DrawingModule.h"
#include "platform/Canvas.h"
#include "supervision/PollScreens.h"

namespace torvane::graphics {

/// One segment in its own pen; the plain pen, solid and one pixel wide, is in force again after it.
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
    std::function<void(core::Slot slot)> ShowPlotBox;
  };

  RealTimePlotter(core::System& system, DrawingModule& drawing, Links links);

  /// One tick. The start of a cycle repaints the plot, and only that wipes the trace before it.
  void RealTimePlot() override;

  void RefreshPlot(core::Slot slot) override { drawing_.RefreshPlot(slot); }
  void ShowPlotBox(core::Slot slot) override { links_.ShowPlotBox(slot); }

  /// Redraws a slot's plot at another size of its canvas: what was traced since the last redraw is
  /// traced again.
  void RedrawWithTrace(core::Slot slot);

  /// Moves the slot's icon to (x, y), mm, or hides it.
  void PlaceMovementIcon(core::Slot slot, double x, double y, bool show);

 private:
  /// One segment in program units, mm, with its pen.
  struct TraceSegment {
    double X1 = 0;
    double Y1 = 0;
    double X2 = 0;
    double Y2 = 0;
    platform::Colour Colour = 0;
    int Style = 0;
    int Width = 1;
  };
  /// What was traced on a slot's canvas since its redraw of that number.
  struct Trace {
    int Redraws = 0;
    std::vector<TraceSegment> Segments;
  };

  static void Draw(platform::Canvas& box, const TraceSegment& segment);
  void Remember(core::Slot slot, const TraceSegment& segment);
  void HideIcons();
  void FollowHead(platform::Canvas& box);

  core::System& system_;
  DrawingModule& drawing_;
  Links links_;
  core::BySlot<Trace> traces_;
};

}  // namespace torvane::graphics
