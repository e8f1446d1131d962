// The two slots of selected programs, and what goes to the controller for the one in force.
#pragma once

#include <string>
#include <string_view>

#include "core/Slot.h"
#include "supervision/ProgramParts.h"
#include "supervision/ScopedFlag.h"

namespace torvane::supervision {

/// "PROGRAM 1   F10" for an empty slot 1, the program's name in the same form otherwise.
[[nodiscard]] std::string ProgramCaption(std::string_view programName, core::Slot slot);

class ActiveStore {
 public:
  explicit ActiveStore(const ProgramParts& parts) : parts_(parts) {}

  /// At start: rebuilds both slots from their files, sends the first table lines and what belongs
  /// to the slot in force. A slot that lacks a file is cleared; a damaged file empties the whole
  /// store, without a message.
  void LoadActivePrograms();

  /// Empties a slot, 1 or 2: its record, its files, its plot and its caption.
  void ClearSlot(core::Slot slot);

  /// Puts a slot's table in force from its first line: the order of a change and of a selection.
  void SendActiveProgram();

  /// Presses the button of the slot in force, without the event of the button.
  void PressActiveButton();

  /// The caption of a slot's button, from its record.
  void ShowCaption(core::Slot slot);

  /// True while the system itself presses a program button.
  [[nodiscard]] bool ProgramChangeGuard() const { return programChangeGuard_; }

 private:
  void LoadSlot(core::Slot slot);
  void ReadSlotFiles(core::Slot slot);
  void HoldSizes(core::Slot slot, const core::ActiveProgram& program) const;
  void GiveUp();
  void SendTableInForce();
  void SendLoadPosition();
  /// Tool offsets, on a machine that has them, and the batch counters.
  void SendActiveValues();
  [[nodiscard]] core::ActiveProgram& Slot(core::Slot slot) const;

  ProgramParts parts_;
  bool programChangeGuard_ = false;
};

}  // namespace torvane::supervision
