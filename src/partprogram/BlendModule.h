// Marks the elements that go on in the direction of the one before them.
#pragma once

#include <vector>

#include "core/MachineData.h"
#include "partprogram/DrawRecord.h"

namespace torvane::partprogram {

/// Sets `Blended` of every record after the header.
void MarkBlends(std::vector<DrawRecord>& kerf, const core::MachineData& machine);

}  // namespace torvane::partprogram
