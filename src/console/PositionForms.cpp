#include "console/PositionForms.h"

#include "console/ScreenSet.h"

namespace torvane::console {

using toolkit::Alignment;
using toolkit::TypeStyle;

namespace {

/// By PositionDisplayMode.
struct ModeRow {
  const char* Caption;
  const char* Label;
};

constexpr std::array<ModeRow, 4> Modes = {{
    {"&ACTUAL", "ACTUAL"},
    {"&COMMAND", "COMMAND"},
    {"&TARGET", "TARGET"},
    {"&FOLLOW", "FOLLOWING ERROR"},
}};

std::string Numbered(const char* name, std::size_t index) {
  return std::string(name) + "(" + std::to_string(index) + ")";
}

}  // namespace

PositionForm::PositionForm(ScreenSet& screens, const std::string& name, const std::string& title,
                           const std::vector<std::string>& axes)
    : Screen(screens, {.Name = name, .PanelName = "PositionPanel", .Title = title}) {
  positionBox_ = &AddPanel(Body(), "PositionBox", toolkit::PanelStyle::Sunken, Role::XYPosition);
  positionBox_->SetFocusable(true);
  modeLabel_ = &AddLabel(*positionBox_, "PositionLabel(0)", "", Role::XYHeader, TypeStyle::Title);
  for (std::size_t i = 0; i < axes.size(); ++i) {
    labels_.push_back(&AddLabel(*positionBox_, Numbered("PositionLabel", i + 1), axes[i],
                                Role::XYHeader, TypeStyle::Title));
    texts_.push_back(&AddLabel(*positionBox_, Numbered("PositionText", i + 1), "0.00",
                               Role::XYPosition, TypeStyle::Figure, Alignment::Right));
    texts_.back()->OnClick(Guard([this] { FocusFigures(); }));
  }
  for (std::size_t mode = 0; mode < Modes.size(); ++mode) {
    modeButtons_[mode] =
        &AddButton(Body(), Numbered("PositionButton", mode), Modes[mode].Caption, Role::General,
                   [this, mode] { ShowMode(static_cast<int>(mode)); });
  }
  exit_ = &AddExitButton(Body());
  SetHome(*positionBox_);
}

void PositionForm::SetPositionText(int index, const std::string& text) {
  if (index >= 1 && index <= static_cast<int>(texts_.size()))
    texts_[static_cast<std::size_t>(index - 1)]->SetText(text);
}

void PositionForm::ShowMode(int mode) {
  modeLabel_->SetText(Modes[static_cast<std::size_t>(mode)].Label);
  Screens().System().State.PositionDisplayMode = static_cast<std::int16_t>(mode);
  FocusFigures();
}

void PositionForm::FocusFigures() {
  if (positionBox_->OnShow() && positionBox_->Enabled()) positionBox_->SetFocus();
}

void PositionForm::Activated() {
  modeLabel_->SetText(
      Modes[static_cast<std::size_t>(Screens().System().State.PositionDisplayMode)].Label);
}

void PositionForm::Layout(const toolkit::Metrics& metrics) {
  const int row = metrics.Px(72);
  const int figures = metrics.Px(48) + static_cast<int>(texts_.size()) * row + 3 * metrics.Gap;
  toolkit::Area rest =
      PlaceBody(metrics, 4 * metrics.KeyWidth + 3 * metrics.Gap + 2 * metrics.Margin,
                figures + 2 * metrics.KeyHeight + 4 * metrics.Margin);
  positionBox_->Place(toolkit::TakeTop(rest, figures, metrics.Margin));
  toolkit::Area box = positionBox_->Inside().Inset(2 * metrics.Gap, metrics.Gap);
  modeLabel_->Place(toolkit::TakeTop(box, metrics.Px(48)));
  for (std::size_t i = 0; i < texts_.size(); ++i) {
    toolkit::Area line = toolkit::TakeTop(box, row);
    labels_[i]->Place(toolkit::TakeLeft(line, metrics.Px(64)));
    texts_[i]->Place(line);
  }
  const auto keys =
      toolkit::Columns(toolkit::TakeTop(rest, metrics.KeyHeight, metrics.Margin), 4, metrics.Gap);
  for (std::size_t i = 0; i < keys.size(); ++i) modeButtons_[i]->Place(keys[i]);
  exit_->Place(toolkit::TakeRight(rest, metrics.KeyWidth));
}

XYPositionForm::XYPositionForm(ScreenSet& screens)
    : PositionForm(screens, ScreenName, "POSITION", {"X", "Y", "Z"}) {}

AuxPositionForm::AuxPositionForm(ScreenSet& screens)
    : PositionForm(screens, ScreenName, "AUXILLARY", {"A", "B"}) {}

}  // namespace torvane::console
