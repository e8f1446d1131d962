// The program follower: 18 lines of the listing round the running record.
#pragma once

#include "console/Screen.h"
#include "supervision/RunningBlock.h"

namespace torvane::console {

class ViewProgForm final : public Screen {
 public:
  explicit ViewProgForm(const ScreenStart& start);

 private:
  /// A highlighted row has text and background exchanged.
  void ShowListing(const supervision::ListingView& rows);
  void Activated() override;

  std::vector<toolkit::Label*> rows_;
};

}  // namespace torvane::console
