// Program information: the sheet, the lengths of the job, the run time.
#pragma once

#include <array>
#include <string>

#include "console/Screen.h"
#include "core/ActiveProgram.h"

namespace torvane::console {

/// The texts that the screen shows of a slot.
struct SetupTexts {
  std::string Material;
  std::string SheetX;  ///< 2 decimals
  std::string SheetY;
  std::string Rapid;    ///< "RAPID : " and the length, inches with a quote or metres
  std::string Profile;  ///< "PROFILE : " likewise
};

[[nodiscard]] SetupTexts SetupTextsOf(const core::ActiveProgram& program);

class SetupForm final : public Screen {
 public:
  static constexpr const char* ScreenName = "SetupForm";

  explicit SetupForm(ScreenSet& screens);

  void SetRunTime(const std::string& text) { timeBox_->SetText(text); }
  [[nodiscard]] const std::string& RunTime() const { return timeBox_->Text(); }

 private:
  void MakeSheet();
  toolkit::Label& AddValue(QWidget& parent, const std::string& name);
  void Activated() override;
  void Layout(const toolkit::Metrics& metrics) override;
  void LayoutSheet(const toolkit::Metrics& metrics);

  toolkit::Frame* sheetFrame_ = nullptr;
  toolkit::Frame* statsFrame_ = nullptr;
  toolkit::Frame* timeFrame_ = nullptr;
  std::array<toolkit::Label*, 2> sheetLabels_{};
  std::array<toolkit::Label*, 2> sizeLabels_{};
  std::array<toolkit::Label*, 2> sheetSizes_{};
  toolkit::Label* material_ = nullptr;
  std::array<toolkit::Label*, 2> stats_{};
  toolkit::Label* timeLabel_ = nullptr;
  toolkit::Label* timeBox_ = nullptr;
  toolkit::Button* exit_ = nullptr;
};

}  // namespace torvane::console
