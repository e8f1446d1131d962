#include "supervision/RunningBlock.h"

#include <string>

#include "core/General.h"
#include "core/LastFile.h"
#include "core/SlotFiles.h"
#include "partprogram/DrawRecord.h"

namespace torvane::supervision {

namespace {

constexpr std::size_t ListingRecordSize = 80;

void FillRows(platform::RecordFile& listing, const ListingWindow& window, int bodyLines,
              ListingView& rows) {
  std::array<char, ListingRecordSize> bytes{};
  for (int row = 1; row <= ListingRows; ++row) {
    auto& shown = rows[static_cast<std::size_t>(row - 1)];
    const int record = window.FirstRecord + row - 1;
    if (record <= bodyLines && listing.Read(static_cast<std::uint32_t>(record), bytes)) {
      shown.Text = core::Trim(std::string_view(bytes.data(), bytes.size()));
    }
    shown.Inverse = row == window.HighlightedRow;
  }
}

}  // namespace

ListingWindow ListingWindowOf(int block, int line) {
  if (block <= 0 || line <= 0) return {1, 0};
  if (line <= 2) return {1, 1};
  return {line - 2, 2};
}

int ListingLine(platform::FileSystem& files, const core::DirectorySet& directories, core::Slot slot,
                int block) {
  if (block < 0) return 0;
  const std::string path = core::SlotFile(directories, slot, core::Extension::Draw);
  if (!files.FileExists(path)) return 0;
  core::NoteLastFile(files, directories, path);
  std::array<char, partprogram::DrawRecordSize> bytes{};
  const auto records = files.OpenRecords(path, bytes.size());
  if (!records->Read(static_cast<std::uint32_t>(block) + 1, bytes)) return 0;
  return partprogram::DecodeRecord(bytes).BlockNumber;
}

ListingView ShowRunningBlock(platform::FileSystem& files, const core::DirectorySet& directories,
                             const core::BySlot<core::ActiveProgram>& programs, core::Slot slot,
                             int block) {
  ListingView rows;
  rows.fill({BlankRow(), false});
  const auto& program = programs[slot];
  const std::string path = core::SlotFile(directories, slot, core::Extension::Listing);
  if (!program.Selected || !files.FileExists(path)) return rows;
  const auto window = ListingWindowOf(block, ListingLine(files, directories, slot, block));
  core::NoteLastFile(files, directories, path);
  const auto listing = files.OpenRecords(path, ListingRecordSize);
  FillRows(*listing, window, program.BodyLines, rows);
  return rows;
}

}  // namespace torvane::supervision
