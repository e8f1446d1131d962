// Writes what the passes made into the files of a slot.
#include <algorithm>
#include <span>

#include "core/General.h"
#include "core/SlotFiles.h"
#include "partprogram/FixedLines.h"
#include "partprogram/Pipeline.h"

namespace torvane::partprogram {

namespace {

namespace Extension = core::Extension;

/// Records encoded at a time: few enough to stay in the nearest memory, many enough for a write.
constexpr std::size_t RecordsPerPart = 128;

void EncodeInto(std::span<const DrawRecord> records, std::string& bytes) {
  bytes.resize(records.size() * DrawRecordSize);
  char* at = bytes.data();
  for (const DrawRecord& record : records) {
    EncodeRecord(record, std::span<char, DrawRecordSize>(at, DrawRecordSize));
    at += DrawRecordSize;
  }
}

void WriteRecords(platform::FileSystem& files, const std::string& path,
                  std::span<const DrawRecord> records) {
  files.ReplaceFileByParts(path, [&](std::string& part) {
    const auto count = std::min(records.size(), RecordsPerPart);
    EncodeInto(records.first(count), part);
    records = records.subspan(count);
  });
}

void WriteFixedLines(platform::FileSystem& files, const std::string& path, std::string_view text,
                     bool skipEmpty) {
  files.ReplaceFileByParts(path, [&](std::string& part) { TakeFixedLines(text, skipEmpty, part); });
}

}  // namespace

std::string EncodeRecords(const std::vector<DrawRecord>& records) {
  std::string bytes;
  EncodeInto(records, bytes);
  return bytes;
}

void WriteReport(platform::FileSystem& files, const core::DirectorySet& directories,
                 const PassResult& result) {
  files.OverwriteFile(directories.ServiceDirectory + "Reverse.txt", result.Conversion.Report);
}

void WriteSlotFiles(platform::FileSystem& files, const core::DirectorySet& directories,
                    core::Slot slot, const PassResult& result) {
  const auto file = [&](std::string_view extension) {
    return core::SlotFile(directories, slot, extension);
  };
  files.ReplaceFile(file(Extension::Body), result.Text.Body);
  files.ReplaceFile(file(Extension::Converted), result.Text.Converted);
  for (const auto& [number, text] : result.Conversion.Subs) {
    files.ReplaceFile(directories.SubsDirectory[slot] + core::IntegerText(number) + ".sub", text);
  }
  WriteReport(files, directories, result);
  WriteRecords(files, file(Extension::Draw), result.Conversion.Records);
  if (result.Outcome != PassOutcome::Good) return;
  WriteRecords(files, file(Extension::Kerf), result.Kerf);
  files.ReplaceFile(file(Extension::TableText), result.Table.Text);
  WriteFixedLines(files, file(Extension::Table), result.Table.Text, false);
  WriteFixedLines(files, file(Extension::Listing), result.Text.Body, true);
}

}  // namespace torvane::partprogram
