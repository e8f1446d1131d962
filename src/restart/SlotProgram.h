// The files of a slot as a rehearsal reads them.
#pragma once

#include <string>
#include <vector>

#include "core/DirectorySet.h"
#include "core/Slot.h"
#include "partprogram/DrawRecord.h"
#include "platform/FileSystem.h"
#include "restart/Rehearsal.h"

namespace torvane::restart {

/// Reads only. A missing or damaged file is a RuntimeFault that names it.
struct SlotProgram {
  std::string Converted;
  std::vector<partprogram::DrawRecord> Draw;
  std::vector<partprogram::DrawRecord> Kerf;
  std::vector<std::string> Listing;
  GatherBodies Bodies;

  [[nodiscard]] RecordPair Records() const { return {Draw, Kerf}; }
};

/// `files` must outlive the program: subroutines are read as they are called.
[[nodiscard]] SlotProgram ReadSlotProgram(platform::FileSystem& files,
                                          const core::DirectorySet& directories, core::Slot slot);

/// The lines of a listing's fixed records, trimmed.
[[nodiscard]] std::vector<std::string> ListingLines(std::string_view bytes);

}  // namespace torvane::restart
