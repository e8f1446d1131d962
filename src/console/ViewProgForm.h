// The program follower: 18 lines of the listing round the running record.
#pragma once

#include <array>
#include <functional>
#include <string>

#include "console/Screen.h"
#include "supervision/RunningBlock.h"

namespace torvane::console {

class ViewProgForm final : public Screen {
 public:
  static constexpr const char* ScreenName = "ViewProgForm";
  static constexpr int RowCount = supervision::ListingRows;

  /// `refresh` runs when the screen comes to the front: the listing from its top, both shown values
  /// stale, the running record read.
  ViewProgForm(ScreenSet& screens, std::function<void()> refresh);

  /// A highlighted row has text and background exchanged.
  void ShowListing(const supervision::ListingView& rows);

 private:
  void Activated() override;
  void Layout(const toolkit::Metrics& metrics) override;

  std::function<void()> refresh_;
  toolkit::Panel* viewBox_ = nullptr;
  std::array<toolkit::Label*, RowCount> rows_{};
  toolkit::Button* exit_ = nullptr;
};

}  // namespace torvane::console
