// The view under zoom and pan, as pure functions. Program units, mm.
#pragma once

#include <cstdint>
#include <optional>

#include "core/PlotSettings.h"
#include "graphics/PlotModel.h"

namespace torvane::graphics {

/// Length of the arms of the cross that chooses on the plot: a sixty-fourth of the view's width, 10
/// where that is 0. A press of a key moves the cross by as much.
[[nodiscard]] double CursorSizeOf(const core::PlotView& view);

/// A view half as wide and half as high again, round the same centre. There is no limit: it may
/// pass the fit of the sheet. Y grows up the screen where `yDirection` is 1.
[[nodiscard]] core::PlotView ZoomedOut(const core::PlotView& view, std::int16_t yDirection);

/// Two corners in any order.
struct Selection {
  float X1 = 0;
  float Y1 = 0;
  float X2 = 0;
  float Y2 = 0;
};

/// The view that shows a selection in the canvas's aspect, anchored at the selection's low corner.
/// A side of 0 takes the other's length. Nothing unless both sides are longer than 1.
[[nodiscard]] std::optional<core::PlotView> ZoomedTo(const core::PlotView& view,
                                                     const Selection& selection, CanvasSize canvas,
                                                     std::int16_t yDirection);

/// The view at the same scale with (x, y) in its middle.
[[nodiscard]] core::PlotView PannedTo(const core::PlotView& view, float x, float y);

/// A press of an arrow.
enum class CursorMove : std::uint8_t { Left, Right, Up, Down };

/// Moves a point by `step`, held within the view. Up and down are those of the screen.
void MoveCursor(const core::PlotView& view, std::int16_t yDirection, double step, CursorMove move,
                float& x, float& y);

}  // namespace torvane::graphics
