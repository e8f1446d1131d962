#include "supervision/ProgramChange.h"

#include <algorithm>

#include "core/Directories.h"
#include "core/SlotFiles.h"
#include "supervision/CycleRules.h"
#include "supervision/ScopedFlag.h"

namespace torvane::supervision {

void ProgramChange::ChangeActiveProgram(core::Slot slot) {
  if (store_.ProgramChangeGuard()) return;
  if (changing_ && !LastPressOf(slot)) return store_.PressActiveButton();
  if (Allowed() && !RefuseAction(CycleAction::ChangeProgram, parts_.System.State, parts_.Dialogs)) {
    Change(slot);
  }
  store_.PressActiveButton();
}

bool ProgramChange::LastPressOf(core::Slot slot) {
  const auto press = ++presses_;
  parts_.Trio.Loop().WaitUntil([this] { return !changing_; });
  return press == presses_ && slot != parts_.System.ActiveSlot && !parts_.Trio.Ending();
}

bool ProgramChange::Allowed() const {
  const auto& console = parts_.System.Console;
  if (console.FormsLocked || parts_.Poll.Changes().Held()) return false;
  const auto visible = parts_.Screens.VisibleForms();
  const bool blocked = std::any_of(visible.begin(), visible.end(), [](const std::string& name) {
    return std::find(ChangeBlockingForms.begin(), ChangeBlockingForms.end(), name) !=
           ChangeBlockingForms.end();
  });
  return !blocked && !console.PlotKeysActive && console.PlotKeyMode < 1;
}

void ProgramChange::Change(core::Slot slot) {
  auto& system = parts_.System;
  const ScopedFlag changing(changing_);
  const ChangeLock::Change change(parts_.Poll.Changes(), parts_.Trio);
  parts_.Poll.RefreshBatch(link::Asker::Operator);
  core::SaveBatch(parts_.Files, system.Directories, system.ActiveSlot,
                  system.Active().BatchCounters);
  system.ActiveSlot = slot;
  if (!system.Active().DirectoryName.empty()) {
    core::SetProgramDirectory(system.Directories, system.Active().DirectoryName);
  }
  core::SaveControlFile(parts_.Files, system.Directories, system.ActiveSlot);
  parts_.Plot.ShowPlotBox(system.ActiveSlot);
  store_.SendActiveProgram();
}

}  // namespace torvane::supervision
