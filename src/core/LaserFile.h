// ".lsr": the laser settings that lie beside a program.
#pragma once

#include <string_view>

#include "core/ActiveProgram.h"
#include "core/MachineData.h"

namespace torvane::core {

/// A title line, then ten numbers divided by commas or line ends. The nine carried values are never
/// sent to the machine, so that a file with numbers missing or damaged is no fault: they read as 0.
/// The tenth must point at an entry of `names` above 0; any other becomes 1, or 0 in a list that
/// has no entry 1.
void ReadLaserFile(std::string_view text, const LaserNameList& names, LaserSetting& setting);

}  // namespace torvane::core
