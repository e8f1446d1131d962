// The one transform between program units and the canvas, as pure functions: the fit of the sheet,
// and what follows from a view. Lengths in program units, mm.
#pragma once

#include "core/MachineData.h"
#include "core/PlotSettings.h"

namespace torvane::graphics {

/// Magnitudes of a canvas's range. Only their ratio counts, so the units may be those of any scale.
struct CanvasSize {
  double Width = 0;
  double Height = 0;
};

/// The view that shows the sheet whole, in the canvas's own aspect. X grows to the right from its
/// low end; Y grows up the screen where `machine.YDirection` is 1. The far edge lies at the
/// magnitude of the low travel limit beyond the sheet, so a negative limit widens both edges.
/// Takes over `ViewZoomed` and the icon from `old`; the corners are singles. Nothing is guarded: a
/// canvas without height, or a sheet that is no number, gives a view that is not ViewDrawable.
[[nodiscard]] core::PlotView FitSheet(const core::MachineData& machine, float sheetX, float sheetY,
                                      CanvasSize canvas, const core::PlotView& old = {});

/// One sixty-fourth of the view's width, never negative.
[[nodiscard]] double IconSizeOf(const core::PlotView& view);

/// All four corner values zero: nothing has been fitted yet.
[[nodiscard]] bool ViewEmpty(const core::PlotView& view);

/// Finite, with a width and a height: a canvas can take it as its scale and lead back from it.
[[nodiscard]] bool ViewDrawable(const core::PlotView& view);

}  // namespace torvane::graphics
