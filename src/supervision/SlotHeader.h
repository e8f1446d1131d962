// Record 1 of a slot's record files: what a start takes from it.
#pragma once

#include <string_view>

#include "core/ActiveProgram.h"
#include "core/DirectorySet.h"
#include "core/Slot.h"
#include "partprogram/DrawRecord.h"
#include "platform/FileSystem.h"

namespace torvane::supervision {

/// Record 1 of Actvprg<slot>.<extension>. A file that is too short for it, whose first record is
/// not the sheet or whose count is below 1 throws RuntimeFault.
[[nodiscard]] partprogram::DrawRecord ReadSlotHeader(platform::FileSystem& files,
                                                     const core::DirectorySet& directories,
                                                     core::Slot slot, std::string_view extension);

/// Material, sheet, clamps, kerf width, units and the count of ".drw".
void TakeDrawHeader(const partprogram::DrawRecord& header, core::ActiveProgram& program);

/// The count of ".krw".
void TakeKerfHeader(const partprogram::DrawRecord& header, core::ActiveProgram& program);

}  // namespace torvane::supervision
