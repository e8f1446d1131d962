#include "supervision/ActiveStore.h"

#include "core/Directories.h"
#include "core/General.h"
#include "core/LastFile.h"
#include "core/SettingsModule.h"
#include "core/SlotFiles.h"
#include "link/Variables.h"
#include "partprogram/DrawRecordFile.h"
#include "platform/RuntimeFault.h"
#include "supervision/SlotHeader.h"

namespace torvane::supervision {

namespace {

namespace Variable = link::Variable;

}  // namespace

std::string ProgramCaption(std::string_view programName, core::Slot slot) {
  const std::string name =
      programName.empty() ? "PROGRAM " + std::to_string(slot.Number()) : std::string(programName);
  return name + "   F1" + std::to_string(slot.Number() - 1);
}

core::ActiveProgram& ActiveStore::Slot(core::Slot slot) const {
  return parts_.System.Programs[slot];
}

void ActiveStore::ShowCaption(core::Slot slot) {
  parts_.Screens.SetProgramCaption(slot, ProgramCaption(Slot(slot).ProgramName, slot));
}

void ActiveStore::PressActiveButton() {
  const ScopedFlag guard(programChangeGuard_);
  parts_.Screens.PressProgramButton(parts_.System.ActiveSlot);
}

void ActiveStore::ClearSlot(core::Slot slot) {
  core::EmptySlot(Slot(slot), parts_.System.Machine.LoadPositionY);
  core::DeleteSlotFiles(parts_.Files, parts_.System.Directories, slot);
  parts_.Plot.RefreshPlot(slot);
  parts_.System.State.RunSeconds = 0;
  ShowCaption(slot);
}

void ActiveStore::ReadSlotFiles(core::Slot slot) {
  auto& files = parts_.Files;
  const auto& directories = parts_.System.Directories;
  core::ActiveProgram program;
  core::LoadSlotConfig(files, directories, slot, program);
  program.Selected = true;
  program.Marker = "!";
  program.Note.clear();
  core::LoadLaserFile(files, directories, core::SlotFile(directories, slot, core::Extension::Laser),
                      parts_.System.LaserNames, program.LaserSettings);
  TakeDrawHeader(ReadSlotHeader(files, directories, slot, core::Extension::Draw), program);
  TakeKerfHeader(ReadSlotHeader(files, directories, slot, core::Extension::Kerf), program);
  HoldSizes(slot, program);
  core::LoadProgramStatus(files, directories, slot, program.Totals);
  core::LoadBatch(files, directories, slot, program.BatchCounters);
  Slot(slot) = program;
}

/// The files of records have the sizes that the counts say, and the table holds nothing but table
/// lines: what is short or foreign shows here and not in the middle of a cut.
void ActiveStore::HoldSizes(core::Slot slot, const core::ActiveProgram& program) const {
  struct Counted {
    std::string_view Extension;
    std::size_t RecordSize;
    int Records;
  };
  const Counted files[] = {
      {core::Extension::Listing, core::LineRecordSize, program.BodyLines},
      {core::Extension::Draw, partprogram::DrawRecordSize, program.DrawRecords},
      {core::Extension::Kerf, partprogram::DrawRecordSize, program.KerfRecords},
      {core::Extension::Table, core::LineRecordSize, program.TableLines},
  };
  const auto& directories = parts_.System.Directories;
  for (const Counted& row : files) {
    const std::string path = core::SlotFile(directories, slot, row.Extension);
    core::NoteLastFile(parts_.Files, directories, path);
    core::HoldSize(parts_.Files, path, row.Records, row.RecordSize);
  }
  core::HoldTableLines(parts_.Files, core::SlotFile(directories, slot, core::Extension::Table));
}

void ActiveStore::LoadSlot(core::Slot slot) {
  auto& system = parts_.System;
  if (core::SlotFilesExist(parts_.Files, system.Directories, slot)) {
    ReadSlotFiles(slot);
    parts_.Plot.RefreshPlot(slot);
    system.State.RunSeconds = 0;
    parts_.Downloads.DownTable(slot, system.TableSent, system.Link.TableFillLines, false);
  } else {
    ClearSlot(slot);
  }
  ShowCaption(slot);
}

void ActiveStore::LoadActivePrograms() {
  auto& system = parts_.System;
  const link::BusyCursor busy(parts_.Dialogs);
  try {
    // Once, before both slots: the second goes on with the count of the first, so that it sends
    // only what is left below the fill.
    system.TableSent = 0;
    LoadSlot(1);
    LoadSlot(2);
    SendTableInForce();
    parts_.Trio.Download(
        link::Assignment(Variable::ProgramCode, core::IntegerText(system.Active().ProgramCode)));
    SendLoadPosition();
    SendActiveValues();
    if (!system.Active().DirectoryName.empty()) {
      core::SetProgramDirectory(system.Directories, system.Active().DirectoryName);
    }
  } catch (const platform::RuntimeFault&) {
    GiveUp();
  }
  parts_.Poll.ForgetShownBlock();
  PressActiveButton();
}

void ActiveStore::GiveUp() {
  ClearSlot(1);
  ClearSlot(2);
  parts_.System.ActiveSlot = 1;
  SendTableInForce();
  SendLoadPosition();
  SendActiveValues();
}

void ActiveStore::SendActiveProgram() {
  auto& system = parts_.System;
  system.TableSent = 0;
  parts_.Downloads.DownTable(system.ActiveSlot, system.TableSent, system.Link.TableFillLines, true);
  parts_.Poll.ForgetShownBlock();
  SendTableInForce();
  SendLoadPosition();
  SendActiveValues();
}

void ActiveStore::SendTableInForce() {
  parts_.Trio.Download(link::Assignment(Variable::TableInForce,
                                        core::IntegerText(parts_.System.ActiveSlot.Number())));
}

void ActiveStore::SendLoadPosition() {
  parts_.Trio.Download(link::Assignment(Variable::LoadPositionAY,
                                        core::NumberText(parts_.System.Active().LoadY, 2)));
}

void ActiveStore::SendActiveValues() {
  auto& system = parts_.System;
  if (system.Machine.MachineVariant > 0) {
    parts_.Downloads.DownToolOffsets(system.ActiveStation);
  }
  parts_.Downloads.DownBatch(system.Active().BatchCounters);
}

}  // namespace torvane::supervision
