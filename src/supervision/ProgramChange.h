// The change between the two programs that are ready: F10, F11 and the program buttons.
#pragma once

#include <array>
#include <cstdint>
#include <string_view>

#include "core/ScreenNames.h"
#include "core/Slot.h"
#include "supervision/ActiveStore.h"
#include "supervision/ProgramParts.h"

namespace torvane::supervision {

/// Screens that forbid the change while they are visible, without a message. Some installations
/// know the names of screens that this one does not have; they do no harm.
inline constexpr std::array<std::string_view, 11> ChangeBlockingForms = {
    core::ScreenNames::ProgramForm,       core::ScreenNames::EditProgForm,
    core::ScreenNames::BlockStartForm,    core::ScreenNames::RestartForm,
    core::ScreenNames::ProgListForm,      core::ScreenNames::SearchForm,
    core::ScreenNames::LaserSettingsForm, core::ScreenNames::MachineStatusForm,
    core::ScreenNames::ViewProgForm,      core::ScreenNames::SetupForm,
    core::ScreenNames::BatchForm};

class ProgramChange {
 public:
  ProgramChange(const ProgramParts& parts, ActiveStore& store) : parts_(parts), store_(store) {}

  /// Puts slot 2 in force if `slot` is 2, otherwise slot 1. A refused change snaps the buttons back
  /// to the slot in force. Pressed during another change, the last press is carried out after it,
  /// if it names the other slot and its rules allow it then; during a selection it is refused.
  void ChangeActiveProgram(core::Slot slot);

 private:
  /// Waits for the change that is under way. True for the last of the presses that came during it,
  /// if it names the slot that is not in force.
  [[nodiscard]] bool LastPressOf(core::Slot slot);
  [[nodiscard]] bool Allowed() const;
  void Change(core::Slot slot);

  ProgramParts parts_;
  ActiveStore& store_;
  bool changing_ = false;
  std::uint64_t presses_ = 0;  ///< during changes
};

}  // namespace torvane::supervision
