// The screen on which the operator names a program and selects it.
#pragma once

#include <array>
#include <functional>
#include <string>

#include "console/Pads.h"
#include "console/Screen.h"
#include "supervision/ProgramEntries.h"
#include "supervision/ProgramSelection.h"

namespace torvane::console {

class ProgramForm final : public Screen {
 public:
  static constexpr const char* ScreenName = "ProgramForm";

  ProgramForm(ScreenSet& screens, supervision::ProgramEntries& entries,
              supervision::ProgramSelection& selection, Pads& pads);

 private:
  void MakeNames();
  void MakeKeys();
  void Loaded() override;
  bool OtherKey(const toolkit::KeyStroke& stroke) override;
  void Layout(const toolkit::Metrics& metrics) override;
  void LayoutNames(toolkit::Area rest, const toolkit::Metrics& metrics);

  void DirectoryChanged();
  /// The name of a box on the key pad; false when it is the same as before.
  bool EnterName(toolkit::PickBox& box);
  void SelectPressed();
  void EditPressed();
  void SearchPressed();
  void RestartPressed();

  supervision::ProgramEntries& entries_;
  supervision::ProgramSelection& selection_;
  Pads& pads_;
  std::array<toolkit::Label*, 2> labels_{};
  toolkit::PickBox* directoryCombo_ = nullptr;
  toolkit::PickBox* programCombo_ = nullptr;
  std::array<toolkit::Button*, 2> padButtons_{};
  toolkit::Button* select_ = nullptr;
  toolkit::Button* exit_ = nullptr;
  /// EditButton, SearchButton, ListsButton, RestartButton 1 and 2, as they stand in their column.
  std::array<toolkit::Button*, 5> side_{};
};

}  // namespace torvane::console
