// One action on programs: delete, rename, copy as, move to or copy to.
#pragma once

#include <string>
#include <vector>

#include "console/Screen.h"
#include "files/ProgramActions.h"

namespace torvane::console {

/// Set up for the action that the file menu chose, and for that one until it is unloaded.
class FileForm final : public Screen {
 public:
  explicit FileForm(const ScreenStart& start);

 private:
  [[nodiscard]] Cell MakeDirectoryLists();
  [[nodiscard]] Cell MakeProgramList();
  [[nodiscard]] Cell MakeNameBox();
  [[nodiscard]] Cell MakeKeys();
  void Loaded() override;
  bool OtherKey(const toolkit::KeyStroke& stroke) override;
  void Unloaded() override;

  void SourceChanged();
  void FillPrograms();
  void FillDestinations();
  void ProgramsChanged();
  void OpenBox();
  void NextField(bool backwards);
  void OkPressed();
  void ExitPressed();
  [[nodiscard]] files::ProgramActionRequest Request() const;

  const files::ProgramActionRow& row_;
  toolkit::ListBox* source_ = nullptr;       ///< DirectoryList(1)
  toolkit::ListBox* destination_ = nullptr;  ///< DirectoryList(2), null where there is none
  toolkit::ListBox* programs_ = nullptr;     ///< FileList(1), or FileList(2) with several marked
  toolkit::EntryBox* box_ = nullptr;         ///< FileBox, null where there is none
  toolkit::Label* count_ = nullptr;
  std::string directory_;  ///< whose programs the list shows
  bool working_ = false;   ///< an action is under way
};

}  // namespace torvane::console
