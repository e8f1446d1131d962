// The screen on which the operator names a program and selects it.
#pragma once

#include <vector>

#include "console/Screen.h"
#include "supervision/ProgramEntries.h"
#include "supervision/ProgramSelection.h"

namespace torvane::console {

class ProgramForm final : public Screen {
 public:
  explicit ProgramForm(const ScreenStart& start);

 private:
  [[nodiscard]] Cell NameCells();
  [[nodiscard]] std::vector<toolkit::Button*> SideKeys();
  void Loaded() override;
  bool OtherKey(const toolkit::KeyStroke& stroke) override;

  void DirectoryChanged();
  /// The name of a box on the key pad; false when it is the same as before.
  bool EnterName(toolkit::PickBox& box);
  void SelectPressed();
  void EditPressed();
  void SearchPressed();
  void ListsPressed();
  /// RestartButton 1: at a block, 2: on the plot.
  void BlockRestartPressed();
  void VisualRestartPressed();
  [[nodiscard]] bool RestartReady();

  supervision::ProgramEntries& entries_;
  supervision::ProgramSelection& selection_;
  toolkit::PickBox* directoryCombo_ = nullptr;
  toolkit::PickBox* programCombo_ = nullptr;
};

}  // namespace torvane::console
