// Writes what the passes made into the files of a slot.
#include "partprogram/SlotWriter.h"

#include <algorithm>
#include <span>

#include "core/General.h"
#include "core/SlotFiles.h"
#include "partprogram/FixedLines.h"

namespace torvane::partprogram {

namespace {

namespace Extension = core::Extension;

/// Records encoded at a time: few enough to stay in the nearest memory, many enough for a write.
constexpr std::size_t RecordsPerPart = 128;
constexpr std::size_t TextPart = 64 * 1024;

void EncodeInto(std::span<const DrawRecord> records, std::string& bytes) {
  bytes.resize(records.size() * DrawRecordSize);
  char* at = bytes.data();
  for (const DrawRecord& record : records) {
    EncodeRecord(record, std::span<char, DrawRecordSize>(at, DrawRecordSize));
    at += DrawRecordSize;
  }
}

using Parts = platform::FileSystem::PartSource;

Parts RecordParts(std::span<const DrawRecord> records) {
  return [records](std::string& part) mutable {
    const auto count = std::min(records.size(), RecordsPerPart);
    EncodeInto(records.first(count), part);
    records = records.subspan(count);
  };
}

Parts FixedLineParts(std::string_view text, bool skipEmpty) {
  return [text, skipEmpty](std::string& part) mutable { TakeFixedLines(text, skipEmpty, part); };
}

Parts TextParts(std::string_view text) {
  return [text](std::string& part) mutable {
    part = text.substr(0, TextPart);
    text.remove_prefix(part.size());
  };
}

/// The order in which the files of a slot are put in place. The report goes between.
namespace Place {
constexpr int Texts = 0;
constexpr int Draw = 1;
constexpr int Kerf = 2;
constexpr int TableText = 3;
constexpr int Table = 4;
constexpr int Listing = 5;
}  // namespace Place

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

SlotWriter::SlotWriter(platform::FileSystem& files, const core::DirectorySet& directories,
                       core::Slot slot, const PassResult& result, Threads threads)
    : files_(files),
      directories_(directories),
      slot_(slot),
      result_(result),
      batch_(files, threads) {}

std::string SlotWriter::File(std::string_view extension) const {
  return core::SlotFile(directories_, slot_, extension);
}

void SlotWriter::After(Pass pass) {
  const bool last = result_.Outcome != PassOutcome::Good;
  switch (pass) {
    case Pass::Clean:
      batch_.Add(Place::Texts, File(Extension::Body), TextParts(result_.Text.Body));
      batch_.Add(Place::Texts, File(Extension::Converted), TextParts(result_.Text.Converted));
      batch_.Add(Place::Listing, File(Extension::Listing), FixedLineParts(result_.Text.Body, true));
      return;
    case Pass::Convert:
      for (const auto& [number, text] : result_.Conversion.Subs) {
        batch_.Add(Place::Texts,
                   directories_.SubsDirectory[slot_] + core::IntegerText(number) + ".sub",
                   TextParts(text));
      }
      if (last) AddDraw();
      return;
    case Pass::Kerf:
      return AddDraw();
    case Pass::Tables:
      batch_.Add(Place::Kerf, File(Extension::Kerf), RecordParts(result_.Kerf));
      batch_.Add(Place::TableText, File(Extension::TableText), TextParts(result_.Table.Text));
      batch_.Add(Place::Table, File(Extension::Table), FixedLineParts(result_.Table.Text, false));
      return;
    case Pass::Blends:
    case Pass::Counts:
      return;
  }
}

/// The kerf pass writes into the programmed records.
void SlotWriter::AddDraw() {
  batch_.Add(Place::Draw, File(Extension::Draw), RecordParts(result_.Conversion.Records));
}

PassResult MakeSlotFiles(platform::FileSystem& files, const core::DirectorySet& directories,
                         std::string_view squeezedProgram, const PassInput& input,
                         SlotWriter::Threads threads) {
  PassResult result;
  SlotWriter writer(files, directories, input.Slot, result, threads);
  RunPasses(squeezedProgram, input, result, [&](Pass pass) { writer.After(pass); });
  writer.Finish();
  return result;
}

void SlotWriter::Finish() {
  batch_.Write();
  batch_.PutInPlace(Place::Texts);
  WriteReport(files_, directories_, result_);
  batch_.PutInPlace(result_.Outcome == PassOutcome::Good ? Place::Listing : Place::Draw);
}

}  // namespace torvane::partprogram
