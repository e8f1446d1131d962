// Turns the records of ".krw" into the lines that fill the controller's table.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "core/Slot.h"
#include "partprogram/DrawRecord.h"

namespace torvane::partprogram {

struct TableResult {
  std::string Text;  ///< ".tbx": the lines, each ended by CR LF
  std::int16_t Lines = 0;
  bool TooManyLines = false;  ///< more than the 16-bit count holds
  int CutLineRecord = 0;      ///< first record whose line is longer than 80 characters, 0 none
};

/// For slot 1 or 2. Writes `TableLine` into the records.
[[nodiscard]] TableResult MakeTables(core::Slot slot, std::vector<DrawRecord>& kerf);

}  // namespace torvane::partprogram
