// The lists: directories and their programs, for the program screen to take one.
#pragma once

#include "console/ChooserForm.h"

namespace torvane::console {

class ProgListForm final : public ChooserForm {
 public:
  explicit ProgListForm(const ScreenStart& start);

 private:
  void Loaded() override;
  [[nodiscard]] std::optional<std::string> ChosenDirectory() const override;
  [[nodiscard]] std::optional<std::string> ChosenProgram() const override;
  [[nodiscard]] toolkit::ListBox& SteeredList() override { return *steered_; }

  void DirectoryChanged();
  void Steer(toolkit::ListBox& list);

  toolkit::ListBox* directories_ = nullptr;
  toolkit::ListBox* programs_ = nullptr;
  toolkit::ListBox* steered_ = nullptr;  ///< had the focus last
};

}  // namespace torvane::console
