// What the store and the selection of programs ask of the screens above them.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "core/Slot.h"

namespace torvane::supervision {

class ProgramScreens {
 public:
  virtual ~ProgramScreens() = default;

  /// Names of all visible screens, such as "SetupForm".
  [[nodiscard]] virtual std::vector<std::string> VisibleForms() const = 0;

  /// Caption of a program button of the main screen.
  virtual void SetProgramCaption(core::Slot slot, std::string_view caption) = 0;

  /// Presses the program button of a slot and releases the other. Their events may run: the change
  /// of program that they ask for returns at once.
  virtual void PressProgramButton(core::Slot slot) = 0;

  /// Shows SetupForm and makes it the current screen.
  virtual void OpenSetupForm() = 0;
  /// Unloads ProgramForm.
  virtual void UnloadProgramForm() = 0;
};

}  // namespace torvane::supervision
