// The marks of a restart over a plot: the travel with the beam off, and the point where the cut
// begins.
#pragma once

#include <array>

#include "core/General.h"
#include "platform/Canvas.h"

namespace torvane::graphics {

/// mm.
struct RestartMarks {
  core::Vector2 Head;      ///< where the head stands
  core::Vector2 Position;  ///< where the controller sends it first
  core::Vector2 Entry;     ///< where the controller goes on, on the compensated path
};

/// In the order of the shapes: travel to the position, travel on to the entry, and a cross over the
/// entry. `size` is the length of the cross's arms, mm.
[[nodiscard]] std::array<std::array<platform::UserPoint, 2>, 4> MarkSegments(
    const RestartMarks& marks, double size);

/// The cross alone, over a point.
void ShowPlaceMark(platform::Canvas& canvas, const core::Vector2& point, double size);

/// Overlay shapes: they need no repaint when they go.
void ShowRestartMarks(platform::Canvas& canvas, const RestartMarks& marks, double size);
void HideRestartMarks(platform::Canvas& canvas);

}  // namespace torvane::graphics
