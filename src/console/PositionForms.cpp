#include "console/PositionForms.h"

#include <array>

#include "console/ConsoleServices.h"
#include "core/General.h"
#include "supervision/PollTrio.h"

namespace torvane::console {

using toolkit::TypeStyle;

namespace {

/// PositionLabel(0) by PositionDisplayMode.
constexpr std::array<const char*, 4> ModeLabels = {"ACTUAL", "COMMAND", "TARGET",
                                                   "FOLLOWING ERROR"};

}  // namespace

PositionForm::PositionForm(const ScreenStart& start, const std::vector<std::string>& axes)
    : Screen(start) {
  positionBox_ = &AddPanel(Body(), "PositionBox", toolkit::PanelStyle::Sunken, Role::XYPosition);
  positionBox_->SetFocusable(true);
  const Cell figures = FigureCells(axes);
  modes_ = AddButtons(Body(), "PositionButton", 0, {"&ACTUAL", "&COMMAND", "&TARGET", "&FOLLOW"},
                      Role::General, [this](int mode) { ChooseMode(mode); });
  exit_ = &AddExitButton(Body());
  SetGrid(680, Rows({Inside(*positionBox_, figures), Columns(CellsOf(modes_)), AtRight(*exit_)})
                   .Spaced(SectionGap));
}

Cell PositionForm::FigureCells(const std::vector<std::string>& axes) {
  modeLabel_ = &AddLabel(*positionBox_, "PositionLabel(0)", "", Role::XYHeader, TypeStyle::Title);
  std::vector<Cell> lines = {Cell(modeLabel_).High(48)};
  for (std::size_t i = 0; i < axes.size(); ++i) {
    const int index = static_cast<int>(i) + 1;
    auto& label = AddLabel(*positionBox_, Numbered("PositionLabel", index), axes[i], Role::XYHeader,
                           TypeStyle::Title);
    auto& text = AddLabel(*positionBox_, Numbered("PositionText", index), "0.00", Role::XYPosition,
                          TypeStyle::Figure, toolkit::Alignment::Right);
    text.OnClick(Guard([this] { positionBox_->SetFocus(); }));
    texts_.push_back(&text);
    lines.push_back(Table({64, 0}, {{label, text}}).High(72));
  }
  return Rows(lines).Spaced(0);
}

void PositionForm::ChooseMode(int mode) {
  System().State.PositionDisplayMode = static_cast<std::int16_t>(mode);
  ShowMode();
  SetHome(*positionBox_);
}

void PositionForm::ShowMode() {
  const auto mode = static_cast<std::size_t>(System().State.PositionDisplayMode);
  modeLabel_->SetText(ModeLabels[mode]);
  for (std::size_t i = 0; i < modes_.size(); ++i) modes_[i]->SetLit(i == mode);
}

void PositionForm::Activated() {
  ShowMode();
  SetHome(*exit_);
}

XYPositionForm::XYPositionForm(const ScreenStart& start) : PositionForm(start, {"X", "Y", "Z"}) {
  OfferStage(supervision::PollStage::Position, [this] {
    const auto values = Services().Poll.ReadDisplayedPositions();
    for (std::size_t i = 0; i < values.size(); ++i)
      texts_[i]->SetText(core::NumberText(values[i], 2));
  });
}

AuxPositionForm::AuxPositionForm(const ScreenStart& start) : PositionForm(start, {"A", "B"}) {}

}  // namespace torvane::console
