#include "restart/SlotProgram.h"

#include <span>

#include "core/General.h"
#include "core/SlotFiles.h"
#include "platform/RuntimeFault.h"
#include "restart/BlockRestart.h"

namespace torvane::restart {
namespace {

using partprogram::DrawRecordSize;

std::vector<partprogram::DrawRecord> ReadRecords(const platform::FileSystem& files,
                                                 const std::string& path) {
  const std::string bytes = files.ReadFile(path);
  if (bytes.empty() || bytes.size() % DrawRecordSize != 0) {
    throw platform::RuntimeFault(path, "is no whole number of records");
  }
  std::vector<partprogram::DrawRecord> records;
  records.reserve(bytes.size() / DrawRecordSize);
  partprogram::RecordDecoder decoder;
  for (std::size_t at = 0; at < bytes.size(); at += DrawRecordSize) {
    records.push_back(
        decoder.Decode(std::span<const char, DrawRecordSize>(bytes.data() + at, DrawRecordSize)));
  }
  return records;
}

}  // namespace

std::vector<std::string> ListingLines(std::string_view bytes) {
  std::vector<std::string> lines;
  for (std::size_t at = 0; at + ListingRecordSize <= bytes.size(); at += ListingRecordSize) {
    lines.emplace_back(core::Trim(bytes.substr(at, ListingRecordSize)));
  }
  return lines;
}

SlotProgram ReadSlotProgram(platform::FileSystem& files, const core::DirectorySet& directories,
                            core::Slot slot) {
  const auto path = [&](std::string_view extension) {
    return core::SlotFile(directories, slot, extension);
  };
  SlotProgram program;
  program.Converted = files.ReadFile(path("cnv"));
  program.Draw = ReadRecords(files, path("drw"));
  program.Kerf = ReadRecords(files, path("krw"));
  program.Listing = ListingLines(files.ReadFile(path("rnd")));
  program.Bodies = SlotBodies(files, directories, slot);
  return program;
}

}  // namespace torvane::restart
