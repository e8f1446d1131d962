#include "console/SetupForm.h"

#include "core/General.h"
#include "supervision/RunTime.h"

namespace torvane::console {

namespace {

/// Stored lengths are millimetres, whatever the program's units.
std::string LengthText(double length, bool imperial) {
  if (imperial) return core::NumberText(core::RoundPlaces(length / 25.4, 1), -1) + "\"";
  return core::NumberText(core::RoundPlaces(length / 1000.0, 3), -1) + " m";
}

}  // namespace

SetupTexts SetupTextsOf(const core::ActiveProgram& program) {
  return {program.Material, core::NumberText(program.SheetX, 2),
          core::NumberText(program.SheetY, 2),
          "RAPID : " + LengthText(program.Totals.MoveLength, program.Imperial),
          "PROFILE : " + LengthText(program.Totals.ProfileLength, program.Imperial)};
}

SetupForm::SetupForm(const ScreenStart& start) : Screen(start) {
  auto& sheet = AddFrame(Body(), "SheetFrame", "SHEET");
  auto& stats = AddFrame(Body(), "StatsFrame", "JOB STATISTICS");
  auto& run = AddFrame(Body(), "TimeFrame", "RUN STATUS");
  stats_ = AddLabels(stats, "StatsLabel", 1, {"", ""});
  for (toolkit::Label* label : stats_) label->SetStyle(toolkit::TypeStyle::Readout);
  auto& timeLabel = AddLabel(run, "TimeLabel", "TIME :");
  auto& timeBox = AddValue(run, "TimeBox");
  OfferStage(supervision::PollStage::RunTime, [this, &timeBox] {
    timeBox.SetText(supervision::RunTimeText(System().State.RunSeconds));
  });
  SetGrid(880, Rows({
                        Inside(sheet, SheetCells(sheet)),
                        Columns({Inside(stats, Rows(CellsOf(stats_))),
                                 Inside(run, Table({96, 0}, {{timeLabel, timeBox}}))})
                            .Spaced(SectionGap),
                        AtRight(AddExitButton(Body())),
                    })
                   .Spaced(SectionGap));
}

Cell SetupForm::SheetCells(toolkit::Frame& sheet) {
  constexpr double CaptionWide = 136;
  auto labels = AddLabels(sheet, "SheetLabel", 1, {"MATERIAL :", "SIZE :"});
  material_ = &AddValue(sheet, "MaterialDescription", toolkit::Alignment::Left);
  auto axes = AddLabels(sheet, "SizeLabel", 1, {"X", "Y"});
  for (toolkit::Label* axis : axes) axis->SetAlignment(toolkit::Alignment::Centre);
  sheetSizes_ = AddValues(sheet, "SheetSize", 1, 2);
  return Table({CaptionWide, 0},
               {{labels[0], material_},
                {labels[1], Columns({Table({32, 0}, {{axes[0], sheetSizes_[0]}}),
                                     Table({32, 0}, {{axes[1], sheetSizes_[1]}})})}});
}

void SetupForm::Activated() {
  const SetupTexts texts = SetupTextsOf(System().Active());
  material_->SetText(texts.Material);
  sheetSizes_[0]->SetText(texts.SheetX);
  sheetSizes_[1]->SetText(texts.SheetY);
  stats_[0]->SetText(texts.Rapid);
  stats_[1]->SetText(texts.Profile);
}

}  // namespace torvane::console
