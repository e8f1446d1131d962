#include "console/SetupForm.h"

#include "console/ScreenSet.h"
#include "core/General.h"

namespace torvane::console {

using toolkit::Alignment;
using toolkit::TypeStyle;

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

SetupForm::SetupForm(ScreenSet& screens)
    : Screen(screens, {.Name = ScreenName,
                       .PanelName = "SetupPanel",
                       .Title = "PROGRAM INFORMATION",
                       .Keys = GlobalKeys::NoSlots}) {
  sheetFrame_ = &AddFrame(Body(), "SheetFrame", "SHEET");
  MakeSheet();
  statsFrame_ = &AddFrame(Body(), "StatsFrame", "JOB STATISTICS");
  for (std::size_t i = 0; i < stats_.size(); ++i) {
    stats_[i] = &AddLabel(*statsFrame_, "StatsLabel(" + std::to_string(i + 1) + ")", "",
                          Role::Panel, TypeStyle::Bold);
  }
  timeFrame_ = &AddFrame(Body(), "TimeFrame", "RUN STATUS");
  timeLabel_ = &AddLabel(*timeFrame_, "TimeLabel", "TIME :", Role::Panel);
  timeBox_ = &AddValue(*timeFrame_, "TimeBox");
  timeBox_->SetAlignment(Alignment::Right);
  exit_ = &AddExitButton(Body());
}

toolkit::Label& SetupForm::AddValue(QWidget& parent, const std::string& name) {
  auto& label = AddLabel(parent, name, "", Role::Entry, TypeStyle::Readout);
  label.SetFilled(true);
  label.SetRim(true);
  label.SetPlainText(true);
  return label;
}

void SetupForm::MakeSheet() {
  sheetLabels_[0] = &AddLabel(*sheetFrame_, "SheetLabel(1)", "MATERIAL :", Role::Panel);
  material_ = &AddValue(*sheetFrame_, "MaterialDescription");
  sheetLabels_[1] = &AddLabel(*sheetFrame_, "SheetLabel(2)", "SIZE :", Role::Panel);
  constexpr std::array<const char*, 2> Axes = {"X", "Y"};
  for (std::size_t i = 0; i < Axes.size(); ++i) {
    const std::string number = "(" + std::to_string(i + 1) + ")";
    sizeLabels_[i] = &AddLabel(*sheetFrame_, "SizeLabel" + number, Axes[i], Role::Panel,
                               TypeStyle::Bold, Alignment::Centre);
    sheetSizes_[i] = &AddValue(*sheetFrame_, "SheetSize" + number);
    sheetSizes_[i]->SetAlignment(Alignment::Right);
  }
}

void SetupForm::Activated() {
  const SetupTexts texts = SetupTextsOf(Screens().System().Active());
  material_->SetText(texts.Material);
  sheetSizes_[0]->SetText(texts.SheetX);
  sheetSizes_[1]->SetText(texts.SheetY);
  stats_[0]->SetText(texts.Rapid);
  stats_[1]->SetText(texts.Profile);
}

void SetupForm::LayoutSheet(const toolkit::Metrics& metrics) {
  auto lines = toolkit::Rows(sheetFrame_->Inside(), 2, metrics.Gap);
  const int caption = metrics.Px(136);
  sheetLabels_[0]->Place(toolkit::TakeLeft(lines[0], caption, metrics.Gap));
  material_->Place(lines[0]);
  sheetLabels_[1]->Place(toolkit::TakeLeft(lines[1], caption, metrics.Gap));
  auto sizes = toolkit::Columns(lines[1], 2, metrics.Gap);
  for (std::size_t i = 0; i < sizes.size(); ++i) {
    sizeLabels_[i]->Place(toolkit::TakeLeft(sizes[i], metrics.Px(32), metrics.Gap));
    sheetSizes_[i]->Place(sizes[i]);
  }
}

void SetupForm::Layout(const toolkit::Metrics& metrics) {
  const int line = metrics.EntryHeight;
  const int sheet = toolkit::Frame::HeightFor(metrics, 2 * line + metrics.Gap);
  const int stats = toolkit::Frame::HeightFor(metrics, 2 * line + metrics.Gap);
  toolkit::Area rest =
      PlaceBody(metrics, metrics.Px(720),
                sheet + stats + metrics.KeyHeight + 2 * metrics.Margin + 2 * metrics.Margin);
  sheetFrame_->Place(toolkit::TakeTop(rest, sheet, metrics.Margin));
  LayoutSheet(metrics);
  auto frames = toolkit::Columns(toolkit::TakeTop(rest, stats, metrics.Margin), 2, metrics.Margin);
  statsFrame_->Place(frames[0]);
  timeFrame_->Place(frames[1]);
  const auto lines = toolkit::Rows(statsFrame_->Inside(), 2, metrics.Gap);
  for (std::size_t i = 0; i < stats_.size(); ++i) stats_[i]->Place(lines[i]);
  toolkit::Area time = timeFrame_->Inside();
  time = toolkit::TakeTop(time, line);
  timeLabel_->Place(toolkit::TakeLeft(time, metrics.Px(96), metrics.Gap));
  timeBox_->Place(time);
  exit_->Place(toolkit::TakeRight(rest, metrics.KeyWidth));
}

}  // namespace torvane::console
