// The plot of both program slots: the whole redraw of a canvas from the slot's files, the limits,
// single records, and the switches that steer the plot.
#pragma once

#include <array>

#include "core/Slot.h"
#include "core/System.h"
#include "graphics/RecordColour.h"
#include "partprogram/DrawRecord.h"
#include "platform/Canvas.h"
#include "platform/FileSystem.h"

namespace torvane::graphics {

/// The two-state buttons of the graphics row, as far as the plot sets them itself. Setting one may
/// call the change procedure of the button back.
class PlotButtons {
 public:
  virtual ~PlotButtons() = default;
  virtual void SetKerfButton(bool pressed) = 0;
  virtual void SetLimitsButton(bool pressed) = 0;
};

/// Slots are 1 and 2; any other is left alone. A missing file of a slot is no fault; one that is
/// there and cannot be read throws RuntimeFault.
class DrawingModule {
 public:
  /// `boxes` are the canvases of slot 1 and 2, both of one size.
  DrawingModule(core::System& system, platform::FileSystem& files,
                std::array<platform::Canvas*, 2> boxes);

  /// Plot.cfg, and the plot's switches as at start: no kerf path, no limits, both buttons up
  /// without their events, no keys on the plot.
  void LoadPlotConfig(PlotButtons& buttons);

  /// Redraws a slot's canvas whole from its files. A slot without ".drw" shows an empty canvas.
  void LoadPlot(core::Slot slot);

  /// How often the slot's canvas, of slot 1 or 2, was redrawn: what was painted over it before has
  /// gone.
  [[nodiscard]] int Redraws(core::Slot slot) const { return redraws_[slot]; }

  /// LoadPlot, and the run time starts again at 0.
  void RefreshPlot(core::Slot slot);

  void DrawSheet(core::Slot slot, bool draw, bool showDatum, double sizeX, double sizeY);
  void ShowLimits(core::Slot slot, bool show);
  void DrawPlotRecord(core::Slot slot, const partprogram::DrawRecord& record, PaintMode mode);

  /// KerfButton changed. Redraws the active slot at once, but during a cycle the state waits for
  /// the next redraw. Nothing while the buttons are being reset.
  void KerfButtonChanged(bool pressed);

  /// LimitsButton changed: both slots, no redraw. Nothing while the buttons are being reset.
  void LimitsButtonChanged(bool pressed);

  /// The canvas of slot 1 or 2; null for any other.
  [[nodiscard]] platform::Canvas* PlotBox(core::Slot slot) const;

 private:
  [[nodiscard]] bool ApplyView(core::Slot slot);

  core::System& system_;
  platform::FileSystem& files_;
  core::BySlot<platform::Canvas*> boxes_;
  core::BySlot<int> redraws_;
};

}  // namespace torvane::graphics
