// Machine.dat and Profiler.cfg: the machine's fixed data as label lines.
#pragma once

#include <string_view>

#include "core/MachineData.h"

namespace torvane::core {

/// The 18 lines of Machine.dat in their order; a shorter text is a RuntimeFault that names `path`.
/// With `imperialUnits` every length is read in inches: times 25.4, rounded to 3 decimals.
/// Fields that the file does not hold stay.
void ReadMachineFile(std::string_view text, std::string_view path, bool imperialUnits,
                     MachineData& machine);

/// The seven lines of Profiler.cfg. What a shorter text leaves out stays as it is.
void ReadProfilerFile(std::string_view text, MachineData& machine);

}  // namespace torvane::core
