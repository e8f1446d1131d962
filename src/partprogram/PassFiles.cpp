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

void EncodeInto(const std::vector<DrawRecord>& records, std::string& bytes) {
  bytes.resize(records.size() * DrawRecordSize);
  char* at = bytes.data();
  for (const DrawRecord& record : records) {
    EncodeRecord(record, std::span<char, DrawRecordSize>(at, DrawRecordSize));
    at += DrawRecordSize;
  }
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
  std::string records;  // one buffer for both record files
  records.reserve(std::max(result.Conversion.Records.size(), result.Kerf.size()) * DrawRecordSize);
  EncodeInto(result.Conversion.Records, records);
  files.ReplaceFile(base + "drw", records);
  if (result.Outcome != PassOutcome::Good) return;
  EncodeInto(result.Kerf, records);
  files.ReplaceFile(base + "krw", records);
  files.ReplaceFile(base + "tbx", result.Table.Text);
  files.ReplaceFile(base + "tbl", result.TableRecords.Bytes);
  files.ReplaceFile(base + "rnd", result.BodyRecords.Bytes);
}

}  // namespace torvane::partprogram
