#include "restart/BlockRestart.h"

#include <algorithm>
#include <array>
#include <memory>

#include "core/General.h"
#include "core/LastFile.h"
#include "core/SlotFiles.h"
#include "supervision/CycleRules.h"

namespace torvane::restart {
namespace {

constexpr int PageRows = 20;
constexpr int RowsInView = 21;

std::string SlotPath(const core::System& system, std::string_view extension) {
  return core::SlotFile(system.Directories, system.ActiveSlot, extension);
}

std::unique_ptr<platform::RecordFile> OpenNoted(platform::FileSystem& files,
                                                const core::System& system,
                                                std::string_view extension, std::size_t size) {
  const std::string path = SlotPath(system, extension);
  core::NoteLastFile(files, system.Directories, path);
  return files.OpenRecords(path, size);
}

const core::ActiveProgram& ProgramInForce(const core::System& system) {
  return system.Programs[system.ActiveSlot];
}

}  // namespace

bool RestartFilesExist(const platform::FileSystem& files, const core::System& system) {
  constexpr std::array<std::string_view, 4> Extensions = {"cfg", "drw", "cnv", "tbl"};
  return std::all_of(Extensions.begin(), Extensions.end(), [&](std::string_view extension) {
    return files.FileExists(SlotPath(system, extension));
  });
}

std::vector<std::string> ReadListing(platform::FileSystem& files, const core::System& system) {
  const auto file = OpenNoted(files, system, "rnd", ListingRecordSize);
  std::vector<std::string> rows;
  std::array<char, ListingRecordSize> bytes{};
  const int count = ProgramInForce(system).BodyLines;
  for (int line = 1; line <= count && file->Read(static_cast<std::uint32_t>(line), bytes); ++line) {
    rows.emplace_back(core::Trim({bytes.data(), bytes.size()}));
  }
  return rows;
}

std::string ListingLine(platform::FileSystem& files, const core::System& system, int line) {
  if (line < 1 || line > ProgramInForce(system).BodyLines) return {};
  const auto file = OpenNoted(files, system, "rnd", ListingRecordSize);
  std::array<char, ListingRecordSize> bytes{};
  if (!file->Read(static_cast<std::uint32_t>(line), bytes)) return {};
  return std::string(core::Trim({bytes.data(), bytes.size()}));
}

namespace {

PlotRecords OpenSlotRecords(platform::FileSystem& files, const core::System& system,
                            std::string_view extension, std::int16_t count) {
  PlotRecords records;
  records.Count = count;
  const std::shared_ptr<platform::RecordFile> file =
      OpenNoted(files, system, extension, partprogram::DrawRecordSize);
  records.Read = [file](std::int16_t number) -> std::optional<partprogram::DrawRecord> {
    std::array<char, partprogram::DrawRecordSize> bytes{};
    if (number < 1 || !file->Read(static_cast<std::uint32_t>(number), bytes)) return std::nullopt;
    return partprogram::DecodeRecord(bytes);
  };
  return records;
}

}  // namespace

PlotRecords OpenPlotRecords(platform::FileSystem& files, const core::System& system) {
  return OpenSlotRecords(files, system, "drw", ProgramInForce(system).DrawRecords);
}

void GatherForSlot(const ChoiceParts& parts, const GatherTarget& target, GatherState& state) {
  const auto& program = ProgramInForce(parts.System);
  parts.Gather.GatherToBlock(program.ProgramName, program.DirectoryName, parts.System.ActiveSlot,
                             target, state);
}

void ClearRestart(const ChoiceParts& parts) {
  ClearGatherState(parts.States.RestartState, parts.System.Machine);
  ClearGatherState(parts.States.RestartNextState, parts.System.Machine);
  parts.States.Block = parts.States.Record = 0;
  partprogram::ClearSplitCycle(parts.Split, parts.Files, parts.System.Directories);
}

ListPosition MovePage(ListPosition at, int count, bool up) {
  if (count <= 0) return {};
  const int step = up ? -PageRows : PageRows;
  return {std::clamp(at.Selected + step, 0, count - 1),
          std::clamp(at.Top + step, 0, std::max(count - RowsInView, 0))};
}

std::vector<std::string> BlockRestart::Begin() {
  ClearRestart(parts_);
  rows_ = ReadListing(parts_.Files, parts_.System);
  return rows_;
}

bool BlockRestart::Select(int row) {
  if (supervision::RefuseAction(supervision::CycleAction::Restart, parts_.System.State,
                                parts_.Dialogs)) {
    return false;
  }
  if (row < 0 || static_cast<std::size_t>(row) >= rows_.size()) return false;
  auto& states = parts_.States;
  states.Block = static_cast<std::int16_t>(row + 1);
  GatherRow(row, states.RestartState);
  if (static_cast<std::size_t>(row) + 1 < rows_.size()) {
    GatherRow(row + 1, states.RestartNextState);
  } else {
    states.RestartNextState = states.RestartState;
  }
  return true;
}

void BlockRestart::GatherRow(int row, GatherState& state) {
  const auto line = static_cast<std::int16_t>(row + 1);
  GatherForSlot(parts_, {rows_[static_cast<std::size_t>(row)], line, 0}, state);
}

bool BlockRestart::Unload() {
  GatherState& state = parts_.States.RestartState;
  if (state.Gathered == GatherMark::No) return false;
  state.Gathered = GatherMark::BlockRestart;
  return true;
}

int BlockRestart::LastRunRow() const {
  const auto& system = parts_.System;
  if (system.State.RunningBlock > 0) return RowOfLine(system.State.RunningBlock);
  if (parts_.Journal == nullptr) return -1;
  const auto place = parts_.Journal->PlaceOfLastRun(system.ActiveSlot);
  if (!place || place->Block < 1 || static_cast<std::size_t>(place->Block) > rows_.size())
    return -1;
  return place->Block - 1;
}

/// By the table lines of the compensated records: settings make two of them, so that counting
/// records would mark a block that has not run.
int BlockRestart::RowOfLine(std::int16_t line) const {
  const auto& system = parts_.System;
  if (!parts_.Files.FileExists(SlotPath(system, "krw"))) return -1;
  const PlotRecords kerf =
      OpenSlotRecords(parts_.Files, system, "krw", ProgramInForce(system).KerfRecords);
  int first = 2;
  int beyond = kerf.Count + 1;
  while (first < beyond) {
    const int middle = first + (beyond - first) / 2;
    const auto record = kerf.Read(static_cast<std::int16_t>(middle));
    if (record && record->TableLine < line) {
      first = middle + 1;
    } else {
      beyond = middle;
    }
  }
  const auto record =
      first <= kerf.Count ? kerf.Read(static_cast<std::int16_t>(first)) : std::nullopt;
  if (!record || static_cast<std::size_t>(record->BlockNumber) > rows_.size()) return -1;
  return record->BlockNumber - 1;
}

}  // namespace torvane::restart
