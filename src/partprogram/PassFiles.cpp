// Writes what the passes made into the files of a slot.
#include <algorithm>
#include <span>

#include "core/General.h"
#include "partprogram/Pipeline.h"

namespace torvane::partprogram {

std::string SlotBaseName(const core::DirectorySet& directories, std::int16_t slot) {
  return directories.RootDirectory + "Actvprg" + core::IntegerText(slot) + ".";
}

namespace {

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
                    std::int16_t slot, const PassResult& result) {
  const std::string base = SlotBaseName(directories, slot);
  files.ReplaceFile(base + "bdy", result.Text.Body);
  files.ReplaceFile(base + "cnv", result.Text.Converted);
  for (const auto& [number, text] : result.Conversion.Subs) {
    files.ReplaceFile(directories.SubsDirectory[static_cast<std::size_t>(slot)] +
                          core::IntegerText(number) + ".sub",
                      text);
  }
  WriteReport(files, directories, result);
  WriteRecords(files, base + "drw", result.Conversion.Records);
  if (result.Outcome != PassOutcome::Good) return;
  WriteRecords(files, base + "krw", result.Kerf);
  files.ReplaceFile(base + "tbx", result.Table.Text);
  WriteFixedLines(files, base + "tbl", result.Table.Text, false);
  WriteFixedLines(files, base + "rnd", result.Text.Body, true);
}

}  // namespace torvane::partprogram
