#include "graphics/DrawingModule.h"

#include <cmath>

#include "core/LastFile.h"
#include "core/SettingsModule.h"
#include "core/SlotFiles.h"
#include "graphics/PlotModel.h"
#include "graphics/PlotReader.h"
#include "graphics/RecordPainter.h"
#include "graphics/SheetPainter.h"

namespace torvane::graphics {

DrawingModule::DrawingModule(core::System& system, platform::FileSystem& files,
                             std::array<platform::Canvas*, 2> boxes)
    : system_(system), files_(files), boxes_{boxes[0], boxes[1]} {}

platform::Canvas* DrawingModule::PlotBox(core::Slot slot) const { return boxes_[slot]; }

void DrawingModule::LoadPlotConfig(PlotButtons& buttons) {
  core::LoadPlotConfig(files_, system_.Directories, system_.Plot, system_.Console);
  system_.Plot.PlotInitialising = true;
  buttons.SetLimitsButton(false);
  buttons.SetKerfButton(false);
  system_.Plot.PlotInitialising = false;
}

void DrawingModule::LoadPlot(core::Slot slot) {
  auto* const box = PlotBox(slot);
  if (box == nullptr) return;
  const auto& program = system_.Programs[slot];
  auto& view = system_.Views[slot];

  ++redraws_[slot];
  box->Cls();
  ShowLimits(slot, false);
  view.PlotIconSize = IconSizeOf(view);
  const auto programmed = core::SlotFile(system_.Directories, slot, core::Extension::Draw);
  if (!files_.FileExists(programmed)) return;
  if (!ApplyView(slot)) return;

  core::NoteLastFile(files_, system_.Directories, programmed);
  const auto drawn = files_.OpenRecords(programmed, partprogram::DrawRecordSize);
  DrawSheet(slot, true, system_.Machine.ClampCount == 0, program.SheetX, program.SheetY);
  ShowLimits(slot, true);
  DrawRecordsOf(*drawn, program.DrawRecords, *box, system_.Colours);

  const auto compensated = core::SlotFile(system_.Directories, slot, core::Extension::Kerf);
  if (!system_.Plot.KerfShown || !files_.FileExists(compensated)) return;
  core::NoteLastFile(files_, system_.Directories, compensated);
  const auto kerf = files_.OpenRecords(compensated, partprogram::DrawRecordSize);
  DrawRecordsOf(*kerf, program.KerfRecords, *box, system_.Colours);
}

bool DrawingModule::ApplyView(core::Slot slot) {
  auto& box = *PlotBox(slot);
  const auto& program = system_.Programs[slot];
  auto& view = system_.Views[slot];
  if (!view.ViewZoomed) {
    view = FitSheet(system_.Machine, program.SheetX, program.SheetY,
                    {std::abs(box.ScaleWidth()), std::abs(box.ScaleHeight())}, view);
  }
  // A view that is no view (a sheet size beyond all numbers, a zoom out without end) would stay in
  // the canvas as the aspect of every later fit.
  if (!ViewDrawable(view)) return false;
  box.Scale({view.Corner1X, view.Corner1Y}, {view.Corner2X, view.Corner2Y});
  view.PlotIconSize = IconSizeOf(view);
  return true;
}

void DrawingModule::RefreshPlot(core::Slot slot) {
  LoadPlot(slot);
  system_.State.RunSeconds = 0;
}

void DrawingModule::DrawSheet(core::Slot slot, bool draw, bool showDatum, double sizeX,
                              double sizeY) {
  if (auto* const box = PlotBox(slot)) {
    graphics::DrawSheet(*box, system_.Colours, draw, showDatum, sizeX, sizeY);
  }
}

void DrawingModule::ShowLimits(core::Slot slot, bool show) {
  auto* const box = PlotBox(slot);
  if (box == nullptr) return;
  graphics::ShowLimits(*box, system_.Machine, system_.Views[slot], system_.Programs[slot],
                       system_.Plot.LimitsShown, show);
}

void DrawingModule::DrawPlotRecord(core::Slot slot, const partprogram::DrawRecord& record,
                                   PaintMode mode) {
  if (auto* const box = PlotBox(slot)) {
    graphics::DrawPlotRecord(*box, system_.Colours, record, mode);
  }
}

void DrawingModule::KerfButtonChanged(bool pressed) {
  if (system_.Plot.PlotInitialising) return;
  system_.Plot.KerfShown = pressed;
  if (!system_.State.MachineRunning) LoadPlot(system_.ActiveSlot);
}

void DrawingModule::LimitsButtonChanged(bool pressed) {
  if (system_.Plot.PlotInitialising) return;
  system_.Plot.LimitsShown = pressed;
  ShowLimits(1, true);
  ShowLimits(2, true);
}

}  // namespace torvane::graphics
