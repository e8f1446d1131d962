// Program information: the sheet, the lengths of the job, the run time.
#pragma once

#include <string>
#include <vector>

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
  explicit SetupForm(const ScreenStart& start);

 private:
  [[nodiscard]] Cell SheetCells(toolkit::Frame& sheet);
  void Activated() override;

  toolkit::Label* material_ = nullptr;
  std::vector<toolkit::Label*> sheetSizes_;
  std::vector<toolkit::Label*> stats_;
};

}  // namespace torvane::console
