#include "supervision/ProgramSelection.h"

#include <memory>

#include "core/General.h"
#include "core/LastFile.h"
#include "core/SettingsModule.h"
#include "core/SlotFiles.h"
#include "platform/RuntimeFault.h"
#include "supervision/CycleRules.h"
#include "supervision/ProgramNames.h"
#include "supervision/WarningText.h"

namespace torvane::supervision {

namespace {

constexpr const char* ErrorsInCode = "Can Not Be Selected Due To Errors in Code !";
constexpr const char* IllegalKerf = "Can Not Be Selected Due To Illegal Kerf Width !";

}  // namespace

void ProgramSelection::Warn(const std::string& text) {
  parts_.Dialogs.ShowWarning(text, WarningMode::Ok, WarningStyle::Warning);
}

std::string ProgramSelection::SlotFile(std::string_view extension) const {
  return core::SlotFile(parts_.System.Directories, parts_.System.ActiveSlot, extension);
}

bool ProgramSelection::SelectProgram(std::string_view directoryText, std::string_view programText) {
  const auto selected = std::make_shared<bool>(false);
  parts_.Poll.RunOutsideTopUp(
      [this, selected, directory = std::string(core::Trim(directoryText)),
       program = std::string(core::Trim(programText))] { *selected = Select(directory, program); });
  return *selected;
}

bool ProgramSelection::Select(const std::string& directory, const std::string& program) {
  if (store_.Busy() || !Accept(directory, program)) return false;
  const FlagGuard busy(store_.BusyFlag());
  try {
    if (!FillSlot(directory, program)) return false;
  } catch (const platform::RuntimeFault&) {
    store_.ClearSlot(parts_.System.ActiveSlot);
    throw;
  }
  PutInForce();
  return true;
}

bool ProgramSelection::Accept(const std::string& directory, const std::string& program) {
  const auto& files = parts_.Files;
  const auto& directories = parts_.System.Directories;
  const char* refusal = nullptr;
  if (!NameLengthValid(directory)) {
    refusal = InvalidDirectoryName;
  } else if (!NameLengthValid(program)) {
    refusal = InvalidProgramName;
  } else if (!DirectoryInRoot(files, directories, directory)) {
    refusal = DirectoryDoesNotExist;
  } else if (!ProgramInRoot(files, directories, directory, program)) {
    refusal = ProgramDoesNotExist;
  }
  if (refusal != nullptr) {
    Warn(OneLineWarning(refusal));
    return false;
  }
  return !RefuseAction(CycleAction::SelectProgram, parts_.System.State, parts_.Dialogs);
}

bool ProgramSelection::FillSlot(const std::string& directory, const std::string& program) {
  BeginSlot(directory, program);
  const std::string squeezed = CopyProgram();
  CopyLaserSettings();
  if (!Convert(squeezed)) {
    store_.ClearSlot(parts_.System.ActiveSlot);
    return false;
  }
  SaveSlot();
  return true;
}

void ProgramSelection::BeginSlot(const std::string& directory, const std::string& program) {
  auto& system = parts_.System;
  partprogram::ClearSplitCycle(split_, parts_.Files, system.Directories);
  store_.ClearSlot(system.ActiveSlot);
  auto& slot = Slot();
  slot.ProgramName = program;
  slot.DirectoryName = directory;
  slot.SourcePath = SourcePathOf(system.Directories, directory, program);
}

std::string ProgramSelection::CopyProgram() {
  const std::string source = Slot().SourcePath + ".prg";
  core::NoteLastFile(parts_.Files, parts_.System.Directories, source);
  std::string squeezed = partprogram::SqueezeProgram(parts_.Files.ReadFile(source));
  parts_.Files.ReplaceFile(SlotFile("prg"), squeezed);
  return squeezed;
}

void ProgramSelection::CopyLaserSettings() {
  auto& files = parts_.Files;
  const auto& directories = parts_.System.Directories;
  const std::string beside = Slot().SourcePath + ".lsr";
  if (!files.FileExists(beside)) {
    std::string from = directories.SettingsDirectory + "Default.lsr";
    if (!files.FileExists(from)) {
      const auto others = files.ListFiles(directories.SettingsDirectory + "*.lsr");
      if (others.empty()) return;
      from = directories.SettingsDirectory + others.front();
    }
    core::NoteLastFile(files, directories, from);
    files.CopyFile(from, beside);
  }
  core::NoteLastFile(files, directories, beside);
  files.CopyFile(beside, SlotFile("lsr"));
}

bool ProgramSelection::Convert(const std::string& squeezed) {
  auto& system = parts_.System;
  auto& slot = Slot();
  partprogram::PassInput input;
  input.ProgramName = slot.ProgramName;
  input.DirectoryName = slot.DirectoryName;
  input.Slot = system.ActiveSlot;
  input.Machine = &system.Machine;
  input.ActiveStation = &system.ActiveStation;
  input.Time = clock_.Now();
  const auto result = partprogram::RunPasses(squeezed, input);
  partprogram::WriteSlotFiles(parts_.Files, system.Directories, system.ActiveSlot, result);
  slot.Marker = "!";
  slot.Note.clear();
  if (result.Outcome == partprogram::PassOutcome::Good) {
    partprogram::FillSlot(result, slot);
    return true;
  }
  const bool kerf = result.Outcome == partprogram::PassOutcome::IllegalKerf;
  Warn(TwoLineWarning(slot.ProgramName, kerf ? IllegalKerf : ErrorsInCode));
  return false;
}

void ProgramSelection::SaveSlot() {
  auto& files = parts_.Files;
  auto& system = parts_.System;
  auto& slot = Slot();
  core::SaveSlotConfig(files, system.Directories, system.ActiveSlot, slot);
  core::LoadLaserFile(files, system.Directories, SlotFile("lsr"), system.LaserNames,
                      slot.LaserSettings);
  core::SaveProgramStatus(files, system.Directories, system.ActiveSlot, slot.Totals);
  core::SaveBatch(files, system.Directories, system.ActiveSlot, slot.BatchCounters);
  slot.Selected = true;
}

void ProgramSelection::PutInForce() {
  auto& system = parts_.System;
  const int slot = system.ActiveSlot;
  store_.ShowCaption(slot);
  // A new program is seen whole, whatever part of the old one was in view.
  system.Views[static_cast<std::size_t>(slot)].ViewZoomed = false;
  parts_.Plot.RefreshPlot(slot);
  system.State.RunSeconds = 0;
  store_.SendActiveProgram();
  parts_.Screens.OpenSetupForm();
  parts_.Screens.UnloadProgramForm();
}

}  // namespace torvane::supervision
