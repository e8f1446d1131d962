// Turns an element back into G-code text for a restart, and clears the working state of a split.
#pragma once

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

/// The element with which a restart goes on, and what of it is still to be cut.
struct SplitCycle {
  DrawRecord RestartRecord;  ///< copy of the record that was chosen; blank: none
  DrawRecord SplitRecord;    ///< its rest, turned about: from its end to the split point
  float SplitStep = 0;       ///< step of the split point: mm in a line, degrees in an arc
  std::int16_t SplitCount = 0;
  std::int16_t SplitPrevious = 0;
  std::int16_t SplitCurrent = 1;
};

/// Back to the start, and "SplitCyc.drw" deleted from the directory of the active programs. Runs
/// whenever a selection or a restart begins anew.
void ClearSplitCycle(SplitCycle& split, platform::FileSystem& files,
                     const core::DirectorySet& directories);

}  // namespace torvane::partprogram
