// Machine.stn and Laser.dat: the stations of the head, and the names of the laser settings.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "core/MachineData.h"

namespace torvane::core {

/// The table and the active station, both cleared first. Rows end at "******", at an empty first
/// field, at the end of the file or at a number outside 0 to 64; a last row without anything after
/// it is lost. Offsets are stored without their sign. The last row of a working type (1 to 9) is
/// the active station.
void ReadStationFile(std::string_view text, StationTable& stations, Station& active);

/// The names of Laser.dat, up to "******", an empty line or the end of the file.
[[nodiscard]] std::vector<std::string> ReadLaserNames(std::string_view text);

/// The list by which a laser setting counts: entry 0 is the station's name, then the names of the
/// file; without any, entry 1 is the station's name too.
[[nodiscard]] LaserNameList MakeLaserNameList(const Station& active,
                                              const std::vector<std::string>& names);

}  // namespace torvane::core
