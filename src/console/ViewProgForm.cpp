#include "console/ViewProgForm.h"

#include "console/ConsoleServices.h"
#include "supervision/PollTrio.h"

namespace torvane::console {

ViewProgForm::ViewProgForm(const ScreenStart& start) : Screen(start) {
  auto& box = AddPanel(Body(), "ViewProgBox", toolkit::PanelStyle::Sunken, Role::Entry);
  box.SetFocusable(true);
  rows_ = AddTextRows(box, "ViewProg", supervision::ListingRows, toolkit::TypeStyle::Mono,
                      [&box](int) { box.SetFocus(); });
  OfferStage(supervision::PollStage::RunningBlock, [this] {
    if (const auto listing = Services().Poll.TakeChangedListing()) ShowListing(*listing);
  });
  auto& exit = AddExitButton(Body());
  SetGrid(968,
          Rows({Inside(box, Rows(LinesOf(rows_)).Spaced(0)), AtRight(exit)}).Spaced(SectionGap));
}

void ViewProgForm::ShowListing(const supervision::ListingView& rows) {
  for (std::size_t i = 0; i < rows.size(); ++i) {
    Paint(*rows_[i], rows[i].Inverse ? Role::EntryInverse : Role::Entry, Colours());
    rows_[i]->SetText(rows[i].Text);
  }
}

void ViewProgForm::Activated() {
  supervision::Poll& poll = Services().Poll;
  ShowListing(poll.Listing(System().ActiveSlot, 0));
  poll.ForgetShownBlock();
  poll.ReadRunningBlock();
}

}  // namespace torvane::console
