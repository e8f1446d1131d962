// Turns an element back into G-code text for a restart, and clears the working state of a split.
#pragma once

#include <array>
#include <cstdint>
#include <string>

#include "core/DirectorySet.h"
#include "partprogram/DrawRecord.h"
#include "platform/FileSystem.h"

namespace torvane::partprogram {

/// "G01 X10.00 Y20.00" with the element's end. No line end.
[[nodiscard]] std::string WriteLineBlock(const DrawRecord& record);

/// "G03 X10.00 Y20.00 I-5.00 J0.00": the word by the sign of the sweep and the machine's
/// YDirection, the centre from the element's start.
[[nodiscard]] std::string WriteArcBlock(const DrawRecord& record, std::int16_t yDirection);

/// Turns a line or an arc about, start for end, and finishes it anew. KerfSide is negated for a
/// line and left alone for an arc.
void ReverseLineRecord(DrawRecord& record);
void ReverseArcRecord(DrawRecord& record);

/// The block of an element turned about: a line or an arc by its code; empty for any other.
[[nodiscard]] std::string WriteElementBlock(DrawRecord record, std::int16_t yDirection);

/// Working state of a split.
struct SplitCycle {
  std::array<DrawRecord, 4> Records{};
  std::int16_t CycleNumber = 1;
  std::int16_t RecordCount = 0;
};

/// Back to the start, and "SplitCyc.drw" deleted from the directory of the active programs. Runs
/// whenever a selection or a restart begins anew.
void ClearSplitCycle(SplitCycle& split, platform::FileSystem& files,
                     const core::DirectorySet& directories);

}  // namespace torvane::partprogram
