#include "supervision/ProgramSelection.h"

#include "core/General.h"
#include "core/LastFile.h"
#include "core/SettingsModule.h"
#include "core/SlotFiles.h"
#include "partprogram/SlotWriter.h"
#include "platform/RuntimeFault.h"
#include "supervision/CycleRules.h"
#include "supervision/ProgramNames.h"

namespace torvane::supervision {

namespace {

constexpr const char* ErrorsInCode = "Can Not Be Selected Due To Errors in Code !";
constexpr const char* IllegalKerf = "Can Not Be Selected Due To Illegal Kerf Width !";

}  // namespace

std::string ProgramSelection::SlotFile(std::string_view extension) const {
  return core::SlotFile(parts_.System.Directories, parts_.System.ActiveSlot, extension);
}

bool ProgramSelection::SelectProgram(std::string_view directoryText, std::string_view programText) {
  const std::string directory(core::Trim(directoryText));
  const std::string program(core::Trim(programText));
  if (parts_.Poll.Changes().Held() || !Accept(directory, program)) return false;
  const char* refusal = nullptr;
  {
    const ChangeLock::Change change(parts_.Poll.Changes(), parts_.Trio);
    refusal = FillSlotOrClear(directory, program);
    if (refusal == nullptr) PutInForce();
  }
  if (refusal == nullptr) {
    parts_.Screens.OpenSetupForm();
    parts_.Screens.UnloadProgramForm();
    return true;
  }
  // The poll goes on while the dialog is open: the change is over, with nothing in its slot.
  parts_.Dialogs.Warn(program, refusal);
  store_.ClearSlot(parts_.System.ActiveSlot);
  return false;
}

const char* ProgramSelection::FillSlotOrClear(const std::string& directory,
                                              const std::string& program) {
  try {
    return FillSlot(directory, program);
  } catch (const platform::RuntimeFault&) {
    store_.ClearSlot(parts_.System.ActiveSlot);
    throw;
  }
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
    parts_.Dialogs.Warn(refusal);
    return false;
  }
  return !RefuseAction(CycleAction::SelectProgram, parts_.System.State, parts_.Dialogs);
}

const char* ProgramSelection::FillSlot(const std::string& directory, const std::string& program) {
  BeginSlot(directory, program);
  const std::string squeezed = CopyProgram();
  CopyLaserSettings();
  const char* const refusal = Convert(squeezed);
  if (refusal == nullptr) SaveSlot();
  return refusal;
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
  parts_.Files.ReplaceFile(SlotFile(core::Extension::Program), squeezed);
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
  files.CopyFile(beside, SlotFile(core::Extension::Laser));
}

const char* ProgramSelection::Convert(const std::string& squeezed) {
  auto& system = parts_.System;
  auto& slot = Slot();
  partprogram::PassInput input;
  input.ProgramName = slot.ProgramName;
  input.DirectoryName = slot.DirectoryName;
  input.Slot = system.ActiveSlot;
  input.Machine = &system.Machine;
  input.ActiveStation = &system.ActiveStation;
  input.Time = clock_.Now();
  const auto result = partprogram::MakeSlotFiles(parts_.Files, system.Directories, squeezed, input);
  slot.Marker = "!";
  slot.Note.clear();
  if (result.Outcome == partprogram::PassOutcome::Good) {
    partprogram::FillSlot(result, slot);
    return nullptr;
  }
  return result.Outcome == partprogram::PassOutcome::IllegalKerf ? IllegalKerf : ErrorsInCode;
}

void ProgramSelection::SaveSlot() {
  auto& files = parts_.Files;
  auto& system = parts_.System;
  auto& slot = Slot();
  core::LoadLaserFile(files, system.Directories, SlotFile(core::Extension::Laser),
                      system.LaserNames, slot.LaserSettings);
  core::SaveProgramStatus(files, system.Directories, system.ActiveSlot, slot.Totals);
  core::SaveBatch(files, system.Directories, system.ActiveSlot, slot.BatchCounters);
  // Last, because the slot counts as whole with it: a power cut before leaves no program and not
  // half of one.
  core::SaveSlotConfig(files, system.Directories, system.ActiveSlot, slot);
  slot.Selected = true;
}

void ProgramSelection::PutInForce() {
  auto& system = parts_.System;
  const core::Slot slot = system.ActiveSlot;
  store_.ShowCaption(slot);
  // A new program is seen whole, whatever part of the old one was in view.
  system.Views[slot].ViewZoomed = false;
  parts_.Plot.RefreshPlot(slot);
  system.State.RunSeconds = 0;
  store_.SendActiveProgram();
}

}  // namespace torvane::supervision
