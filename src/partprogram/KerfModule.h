// Kerf compensation: the records of ".drw" moved aside by the kerf width and joined again.
#pragma once

#include <vector>

#include "core/MachineData.h"
#include "partprogram/DrawRecord.h"

namespace torvane::partprogram {

struct KerfResult {
  std::vector<DrawRecord> Records;  ///< ".krw", the header first
  bool IllegalWidth = false;
  bool TooManyRecords = false;  ///< more than the 16-bit count holds
};

/// `kerfWidth` in mm, the whole of it. Writes into each of `draw` the number of its record in the
/// result.
[[nodiscard]] KerfResult MakeKerfFile(std::vector<DrawRecord>& draw, double kerfWidth,
                                      const core::MachineData& machine);

}  // namespace torvane::partprogram
