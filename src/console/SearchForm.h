// The search: programs found by text in their names, for the program screen to take one.
#pragma once

#include "console/ChooserForm.h"
#include "files/ProgramSearch.h"
#include "toolkit/ScrollBar.h"

namespace torvane::console {

/// Two lists in step, directory and program of each find, with one scroll bar for both.
class SearchForm final : public ChooserForm {
 public:
  explicit SearchForm(const ScreenStart& start);

 private:
  void Activated() override;
  [[nodiscard]] std::optional<std::string> ChosenDirectory() const override;
  [[nodiscard]] std::optional<std::string> ChosenProgram() const override;
  [[nodiscard]] toolkit::ListBox& SteeredList() override { return *lists_[1]; }

  [[nodiscard]] Cell MakeLists(toolkit::Frame& frame);
  void Search();
  void ShowProgress(const files::SearchProgress& progress);
  void ShowFound(std::vector<files::FoundProgram> found);
  void Follow(const toolkit::ListBox& moved);
  void ScrollTo(int topLine);

  std::array<toolkit::ListBox*, 2> lists_{};  ///< SearchList(1) and (2)
  toolkit::ScrollBar* bar_ = nullptr;
  toolkit::Label* label_ = nullptr;
  toolkit::Label* count_ = nullptr;
  bool searched_ = false;
};

}  // namespace torvane::console
