// The line editor for a program or for another text file, worked by large keys.
#pragma once

#include "console/Screen.h"
#include "files/ProgramText.h"

namespace torvane::console {

class EditProgForm final : public Screen {
 public:
  explicit EditProgForm(const ScreenStart& start);

 private:
  void Loaded() override;

  [[nodiscard]] Cell MakeList();
  [[nodiscard]] Cell MakeKeys();
  void ListMoved();
  void EditPressed(int index);
  void PagePressed(int index);
  void OkPressed();
  void InsertLine();
  void EditLine();
  void DeleteLine();
  /// Brings selection, view and the figures beside the list up to date.
  void ShowPlace();

  const files::EditTask task_;
  files::EditDocument document_;
  toolkit::ListBox* list_ = nullptr;
  toolkit::Label* line_ = nullptr;
  toolkit::Label* changed_ = nullptr;
};

}  // namespace torvane::console
