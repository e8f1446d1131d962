#include "supervision/SlotHeader.h"

#include <array>

#include "core/General.h"
#include "core/LastFile.h"
#include "core/SlotFiles.h"
#include "platform/RuntimeFault.h"

namespace torvane::supervision {

using partprogram::Figure;
using partprogram::Mark;

partprogram::DrawRecord ReadSlotHeader(platform::FileSystem& files,
                                       const core::DirectorySet& directories, core::Slot slot,
                                       std::string_view extension) {
  const std::string path = core::SlotFile(directories, slot, extension);
  core::NoteLastFile(files, directories, path);
  std::array<char, partprogram::DrawRecordSize> bytes{};
  if (!files.OpenRecords(path, bytes.size())->Read(1, bytes)) {
    throw platform::RuntimeFault(path, "the file is too short for its first record");
  }
  auto header = partprogram::DecodeRecord(bytes);
  if (header.Code != partprogram::RecordCode::Sheet || header[Mark::RecordCount] < 1) {
    throw platform::RuntimeFault(path, "the first record is no sheet record");
  }
  return header;
}

void TakeDrawHeader(const partprogram::DrawRecord& header, core::ActiveProgram& program) {
  program.Material = core::Trim(partprogram::TextOf(header.Common().Material));
  program.SheetX = header[Figure::SheetX];
  program.SheetY = header[Figure::SheetY];
  for (std::size_t clamp = 0; clamp < program.Clamps.size(); ++clamp) {
    program.Clamps[clamp] = header[partprogram::ClampFigure(clamp)];
  }
  program.KerfWidth = header[Figure::KerfWidth];
  program.DrawRecords = header[Mark::RecordCount];
  program.Imperial = header[Mark::Imperial] != 0;
}

void TakeKerfHeader(const partprogram::DrawRecord& header, core::ActiveProgram& program) {
  program.KerfRecords = header[Mark::RecordCount];
}

}  // namespace torvane::supervision
