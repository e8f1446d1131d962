// Creates, deletes or renames a program directory.
#pragma once

#include "console/Screen.h"
#include "files/DirectoryActions.h"

namespace torvane::console {

/// Set up for the action that the file menu chose, and for that one until it is unloaded.
class DirectoryForm final : public Screen {
 public:
  explicit DirectoryForm(const ScreenStart& start);

 private:
  [[nodiscard]] Cell MakeList();
  [[nodiscard]] Cell MakeBox();
  [[nodiscard]] Cell MakeKeys();
  void Loaded() override;
  void Unloaded() override;

  void OpenBox();
  void OkPressed();

  const files::DirectoryActionRow& row_;
  toolkit::ListBox* list_ = nullptr;  ///< null where nothing is chosen
  toolkit::EntryBox* box_ = nullptr;  ///< null where no name is entered
  bool working_ = false;              ///< an action is under way
};

}  // namespace torvane::console
