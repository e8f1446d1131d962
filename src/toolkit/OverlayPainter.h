// How the overlays of a canvas look.
#pragma once

class QPainter;

namespace torvane::toolkit {

class MappedCanvas;

/// Paints the overlays that show, in their order, over a painter whose origin is the canvas's top
/// left corner: rectangles, the rounded square of the movement icon, and lines, all one pixel.
void PaintOverlays(QPainter& painter, const MappedCanvas& canvas);

/// How far beyond its corners an overlay may paint, pixels.
[[nodiscard]] int OverlayReach(const MappedCanvas& canvas);

}  // namespace torvane::toolkit
