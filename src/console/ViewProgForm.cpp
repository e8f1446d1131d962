#include "console/ViewProgForm.h"

#include "console/ScreenSet.h"

namespace torvane::console {

ViewProgForm::ViewProgForm(ScreenSet& screens, std::function<void()> refresh)
    : Screen(screens, {.Name = ScreenName,
                       .PanelName = "ViewProgPanel",
                       .Title = "PROGRAM",
                       .Keys = GlobalKeys::NoSlots}),
      refresh_(std::move(refresh)) {
  viewBox_ = &AddPanel(Body(), "ViewProgBox", toolkit::PanelStyle::Sunken, Role::Entry);
  viewBox_->SetFocusable(true);
  for (int index = 1; index <= RowCount; ++index) {
    auto& row = AddLabel(*viewBox_, "ViewProg(" + std::to_string(index) + ")", "", Role::Entry);
    row.SetPlainText(true);
    row.SetFilled(true);
    row.OnClick(Guard([this] { viewBox_->SetFocus(); }));
    rows_[static_cast<std::size_t>(index - 1)] = &row;
  }
  exit_ = &AddExitButton(Body());
}

void ViewProgForm::ShowListing(const supervision::ListingView& rows) {
  for (std::size_t i = 0; i < rows.size(); ++i) {
    Paint(*rows_[i], rows[i].Inverse ? Role::EntryInverse : Role::Entry, Colours());
    rows_[i]->SetText(rows[i].Text);
  }
}

void ViewProgForm::Activated() { refresh_(); }

void ViewProgForm::Layout(const toolkit::Metrics& metrics) {
  const int rows = RowCount * metrics.LineHeight + 2 * metrics.Gap + 2 * metrics.Hairline;
  toolkit::Area rest =
      PlaceBody(metrics, metrics.Px(880), rows + metrics.KeyHeight + 3 * metrics.Margin);
  viewBox_->Place(toolkit::TakeTop(rest, rows, metrics.Margin));
  const auto lines = toolkit::Rows(viewBox_->Inside().Inset(metrics.Gap), RowCount, 0);
  for (std::size_t i = 0; i < lines.size(); ++i) rows_[i]->Place(lines[i]);
  exit_->Place(toolkit::TakeRight(rest, metrics.KeyWidth));
}

}  // namespace torvane::console
