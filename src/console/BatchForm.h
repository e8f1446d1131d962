// The batch counter: parts and sheets of the program in force.
#pragma once

#include <array>

#include "console/Screen.h"
#include "core/ActiveProgram.h"

namespace torvane::console {

class BatchForm final : public Screen {
 public:
  explicit BatchForm(const ScreenStart& start);

 private:
  void MakeKeys();
  [[nodiscard]] bool Editing() const;
  void ShowEditing(bool editing);
  void ShowRecord(const core::Batch& batch);
  void BoxPressed(int index);
  void SetPressed();
  void ClearPressed();
  void TakeSettings();
  void Store(const core::Batch& batch);
  [[nodiscard]] double ValueOf(int index) const;
  [[nodiscard]] toolkit::EntryBox& Box(int index) const {
    return *boxes_[static_cast<std::size_t>(index - 1)];
  }

  void Activated() override;
  void Unloaded() override;

  std::array<toolkit::EntryBox*, 5> boxes_{};
  toolkit::Button* setButton_ = nullptr;
  toolkit::Button* clearButton_ = nullptr;
  toolkit::Button* exitButton_ = nullptr;
};

}  // namespace torvane::console
