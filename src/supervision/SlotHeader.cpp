#include "supervision/SlotHeader.h"

#include <array>

#include "core/General.h"
#include "core/LastFile.h"
#include "core/SlotFiles.h"
#include "platform/RuntimeFault.h"

namespace torvane::supervision {

partprogram::DrawRecord ReadSlotHeader(platform::FileSystem& files,
                                       const core::DirectorySet& directories, int slot,
                                       std::string_view extension) {
  const std::string path = core::SlotFile(directories, slot, extension);
  core::NoteLastFile(files, directories, path);
  std::array<char, partprogram::DrawRecordSize> bytes{};
  if (!files.OpenRecords(path, bytes.size())->Read(1, bytes)) {
    throw platform::RuntimeFault(path, "the file is too short for its first record");
  }
  const auto header = partprogram::DecodeRecord(bytes);
  if (header.Code != partprogram::RecordCode::Sheet || header.Flags[0] < 1) {
    throw platform::RuntimeFault(path, "the first record is no sheet record");
  }
  return header;
}

void TakeDrawHeader(const partprogram::DrawRecord& header, core::ActiveProgram& program) {
  program.Material = core::Trim(partprogram::TextOf(header.Material));
  program.SheetX = header.Values[0];
  program.SheetY = header.Values[1];
  for (std::size_t clamp = 0; clamp < program.Clamps.size(); ++clamp) {
    program.Clamps[clamp] = header.Values[6 + clamp];
  }
  program.KerfWidth = header.Values[14];
  program.DrawRecords = header.Flags[0];
  program.Imperial = header.Flags[1] != 0;
}

void TakeKerfHeader(const partprogram::DrawRecord& header, core::ActiveProgram& program) {
  program.KerfRecords = header.Flags[0];
}

}  // namespace torvane::supervision
