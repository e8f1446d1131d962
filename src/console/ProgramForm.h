// The screen on which the operator names a program and selects it.
#pragma once

#include <vector>

#include "console/Screen.h"
#include "supervision/ProgramEntries.h"
#include "supervision/ProgramSelection.h"

namespace torvane::console {

/// What the lists and the search hand back.
struct SelectedProgram {
  std::string Directory;
  std::string Name;
};

class ProgramForm final : public Screen {
 public:
  explicit ProgramForm(const ScreenStart& start);

  /// Fills both lists for the program that was chosen elsewhere and takes its names into the boxes,
  /// though no list may show them; nothing of it counts as a change by the operator.
  void TakeSelected(SelectedProgram selected);

 private:
  [[nodiscard]] Cell NameCells();
  [[nodiscard]] std::vector<toolkit::Button*> SideKeys();
  void Loaded() override;
  bool OtherKey(const toolkit::KeyStroke& stroke) override;

  void DirectoryChanged();
  /// The name of a box on the key pad; false when it is the same as before.
  bool EnterName(toolkit::PickBox& box);
  void SelectPressed();
  void PrepareEdit();
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
  SelectedProgram selectedProgram_;
};

}  // namespace torvane::console
