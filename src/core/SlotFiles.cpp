#include "core/SlotFiles.h"

#include <algorithm>
#include <limits>

#include "core/ConfigText.h"
#include "core/General.h"
#include "core/LastFile.h"
#include "platform/PlainNames.h"
#include "platform/RuntimeFault.h"

namespace torvane::core {

namespace {

constexpr double LongLow = std::numeric_limits<std::int32_t>::min();
constexpr double LongHigh = std::numeric_limits<std::int32_t>::max();
constexpr double SingleHigh = std::numeric_limits<float>::max();

std::int16_t StoredCount(LineReader& lines, std::string_view path) {
  return TruncateToInt16(
      StoredNumber(lines.Required(), path, 0, std::numeric_limits<std::int16_t>::max()));
}

std::int32_t StoredLong(LineReader& lines, std::string_view path) {
  return TruncateToInt32(StoredNumber(lines.Required(), path, LongLow, LongHigh));
}

float StoredSingle(LineReader& lines, std::string_view path) {
  return ToSingle(StoredNumber(lines.Required(), path, -SingleHigh, SingleHigh));
}

/// The marker that ends each of these files: without it the file was not written to its end.
void RequireMarker(LineReader& lines, std::string_view path) {
  if (Trim(lines.Required()) == EndMarker) return;
  throw platform::RuntimeFault(std::string(path), "the end mark is missing");
}

std::string StoredName(LineReader& lines, std::string_view path) {
  std::string name(Trim(lines.Required()));
  if (platform::IsPlainName(name)) return name;
  throw platform::RuntimeFault(std::string(path), "\"" + name + "\" is no plain name");
}

/// A value a line, then the marker.
std::string ValueLines(std::initializer_list<std::string_view> values) {
  std::string text;
  for (const auto value : values) {
    text += value;
    text += "\r\n";
  }
  text += EndMarker;
  return text + "\r\n";
}

/// The five counters in the order of the file.
constexpr std::array<std::int32_t Batch::*, 5> BatchFields = {
    &Batch::PartsPerSheet, &Batch::PartsRequired, &Batch::SheetsRequired, &Batch::SheetsCompleted,
    &Batch::SheetsToGo};

/// The text of an optional file of the slot, noted before it is opened; false without the file.
bool ReadOptional(platform::FileSystem& files, const DirectorySet& directories,
                  const std::string& path, std::string& text) {
  if (!files.FileExists(path)) return false;
  NoteLastFile(files, directories, path);
  text = files.ReadFile(path);
  return true;
}

}  // namespace

std::string SlotFile(std::string_view rootDirectory, Slot slot, std::string_view extension) {
  std::string path(rootDirectory);
  return path.append("Actvprg").append(std::to_string(slot.Number())).append(".").append(extension);
}

std::string SlotFile(const DirectorySet& directories, Slot slot, std::string_view extension) {
  return SlotFile(directories.RootDirectory, slot, extension);
}

bool SlotFilesExist(const platform::FileSystem& files, const DirectorySet& directories, Slot slot) {
  return std::all_of(RequiredSlotFiles.begin(), RequiredSlotFiles.end(), [&](auto extension) {
    return files.FileExists(SlotFile(directories, slot, extension));
  });
}

void DeleteSlotFiles(platform::FileSystem& files, const DirectorySet& directories, Slot slot) {
  for (const auto& name : files.ListFiles(SlotFile(directories, slot, Extension::Any))) {
    files.DeleteFile(directories.RootDirectory + name);
  }
  // A folder in the place of a file holds nothing of the slot; one that is not empty is a fault.
  const std::string stem = SlotFile("", slot, "");
  for (const auto& name : files.ListDirectories(directories.RootDirectory)) {
    if (name.starts_with(stem)) files.RemoveDirectory(directories.RootDirectory + name);
  }
  // Links that lead nowhere, pipes and devices are not listed; left there, they would be half a
  // slot.
  for (const auto extension : SlotFileExtensions) {
    files.DeleteFile(SlotFile(directories, slot, extension));
  }
}

void HoldSize(const platform::FileSystem& files, const std::string& path, int records,
              std::size_t recordSize) {
  const std::uint64_t wanted = static_cast<std::uint64_t>(records) * recordSize;
  const std::uint64_t size = files.FileSize(path);
  if (size == wanted) return;
  throw platform::RuntimeFault(
      path, "its size is " + std::to_string(size) + " bytes in place of " + std::to_string(wanted));
}

bool IsTableLine(std::string_view record) { return record.starts_with("TABLE("); }

void HoldTableLines(const platform::FileSystem& files, const std::string& path) {
  const std::string table = files.ReadFile(path);
  for (std::size_t at = 0; at < table.size(); at += LineRecordSize) {
    if (IsTableLine(std::string_view(table).substr(at))) continue;
    throw platform::RuntimeFault(
        path, "record " + std::to_string(at / LineRecordSize + 1) + " is no table line");
  }
}

void EmptySlot(ActiveProgram& program, float loadPositionY) {
  program = ActiveProgram{};
  program.LoadY = loadPositionY;
}

void ReadSlotConfig(std::string_view text, std::string_view path, ActiveProgram& program) {
  LineReader lines(text, path);
  program.ProgramName = StoredName(lines, path);
  program.DirectoryName = StoredName(lines, path);
  program.SourcePath = Trim(lines.Required());
  program.BodyLines = StoredCount(lines, path);
  program.TableLines = StoredCount(lines, path);
  program.LoadY = StoredSingle(lines, path);
  RequireMarker(lines, path);
}

std::string SlotConfigText(const ActiveProgram& program) {
  return ValueLines({program.ProgramName, program.DirectoryName, program.SourcePath,
                     IntegerText(program.BodyLines), IntegerText(program.TableLines),
                     NumberText(program.LoadY, -1)});
}

RunTotals ReadProgramStatus(std::string_view text, std::string_view path) {
  LineReader lines(text, path);
  RunTotals totals;
  totals.ProgramTime = StoredLong(lines, path);
  totals.MoveLength = StoredSingle(lines, path);
  totals.ProfileLength = StoredSingle(lines, path);
  RequireMarker(lines, path);
  return totals;
}

std::string ProgramStatusText(const RunTotals& totals) {
  return ValueLines({LongText(totals.ProgramTime), NumberText(totals.MoveLength, -1),
                     NumberText(totals.ProfileLength, -1)});
}

Batch ReadBatch(std::string_view text, std::string_view path) {
  LineReader lines(text, path);
  Batch batch;
  for (const auto field : BatchFields) batch.*field = StoredLong(lines, path);
  RequireMarker(lines, path);
  return batch;
}

std::string BatchText(const Batch& batch) {
  return ValueLines({LongText(batch.PartsPerSheet), LongText(batch.PartsRequired),
                     LongText(batch.SheetsRequired), LongText(batch.SheetsCompleted),
                     LongText(batch.SheetsToGo)});
}

void LoadSlotConfig(platform::FileSystem& files, const DirectorySet& directories, Slot slot,
                    ActiveProgram& program) {
  const std::string path = SlotFile(directories, slot, Extension::Config);
  NoteLastFile(files, directories, path);
  ReadSlotConfig(files.ReadFile(path), path, program);
}

void SaveSlotConfig(platform::FileSystem& files, const DirectorySet& directories, Slot slot,
                    const ActiveProgram& program) {
  files.ReplaceFile(SlotFile(directories, slot, Extension::Config), SlotConfigText(program));
}

void LoadProgramStatus(platform::FileSystem& files, const DirectorySet& directories, Slot slot,
                       RunTotals& totals) {
  totals = RunTotals{};
  const std::string path = SlotFile(directories, slot, Extension::Status);
  std::string text;
  if (ReadOptional(files, directories, path, text)) totals = ReadProgramStatus(text, path);
}

void SaveProgramStatus(platform::FileSystem& files, const DirectorySet& directories, Slot slot,
                       const RunTotals& totals) {
  files.ReplaceFile(SlotFile(directories, slot, Extension::Status), ProgramStatusText(totals));
}

void LoadBatch(platform::FileSystem& files, const DirectorySet& directories, Slot slot,
               Batch& batch) {
  batch = Batch{};
  const std::string path = SlotFile(directories, slot, Extension::BatchCounters);
  std::string text;
  if (ReadOptional(files, directories, path, text)) batch = ReadBatch(text, path);
}

void SaveBatch(platform::FileSystem& files, const DirectorySet& directories, Slot slot,
               const Batch& batch) {
  files.ReplaceFile(SlotFile(directories, slot, Extension::BatchCounters), BatchText(batch));
}

}  // namespace torvane::core
