// The program follower: 18 lines of the listing round the running record.
#pragma once

#include <array>
#include <functional>
#include <string>

#include "console/Screen.h"

namespace torvane::console {

class ViewProgForm final : public Screen {
 public:
  static constexpr const char* ScreenName = "ViewProgForm";
  static constexpr int RowCount = 18;

  /// `refresh` runs when the screen comes to the front: the listing from its top, both shown values
  /// stale, the running record read.
  ViewProgForm(ScreenSet& screens, std::function<void()> refresh);

  /// Row 1 to 18. A chosen row has text and background exchanged.
  void SetRow(int index, const std::string& text, bool chosen);
  [[nodiscard]] const std::string& RowText(int index) const;
  [[nodiscard]] bool RowChosen(int index) const;

 private:
  void Activated() override;
  void Layout(const toolkit::Metrics& metrics) override;

  std::function<void()> refresh_;
  toolkit::Panel* viewBox_ = nullptr;
  std::array<toolkit::Label*, RowCount> rows_{};
  toolkit::Button* exit_ = nullptr;
};

}  // namespace torvane::console
