// The trace of the head over the plot, one segment a poll tick, and the icon at the head.
#pragma once

#include <functional>
#include <string_view>

#include "core/System.h"
#include "graphics/DrawingModule.h"
#include "platform/Canvas.h"

namespace torvane::graphics {

/// One segment in its own pen; the plain pen, solid and one pixel wide, stands again behind it.
/// `style` 0 solid, 2 dotted; a negative one draws nothing. `width` in pixels, from 1.
void TraceLine(platform::Canvas& canvas, double x1, double y1, double x2, double y2,
               platform::Colour colour, int style, int width);

/// The stage of the poll that follows the head. It runs before the positions are read, so the trace
/// runs one tick behind the figures.
class RealTimePlotter {
 public:
  /// A typed query: expression and decimals; 0 after a failure.
  using SingleQuery = std::function<float(std::string_view expression, int decimals)>;

  RealTimePlotter(core::System& system, DrawingModule& drawing, SingleQuery getRspnsSngl);

  /// One tick. The start of a cycle repaints the plot, and only that wipes the trace before it.
  void RealTimePlot();

  /// Moves the slot's icon to (x, y), mm, or hides it.
  void PlaceMovementIcon(int slot, double x, double y, bool show);

 private:
  void HideIcons();
  void FollowHead(platform::Canvas& box);

  core::System& system_;
  DrawingModule& drawing_;
  SingleQuery getRspnsSngl_;
};

}  // namespace torvane::graphics
