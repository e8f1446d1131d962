// The configuration files of an installation, each read once at start into the records that the
// whole program shares.
//
// Every reader notes its file in LastFile.txt just before it opens it. A required file that is
// missing or too short is a RuntimeFault that names it; an optional file's absence leaves the
// defaults.
#pragma once

#include <string>
#include <string_view>

#include "core/ActiveProgram.h"
#include "core/ColourTable.h"
#include "core/DirectorySet.h"
#include "core/LinkSettings.h"
#include "core/MachineData.h"
#include "core/System.h"
#include "platform/FileSystem.h"

namespace torvane::core {

/// Colour.cfg of `RootDirectory`, made with the defaults when it is missing. At start-up the root
/// is not known yet, and the file is that of the working directory.
void LoadColours(platform::FileSystem& files, const DirectorySet& directories,
                 ColourTable& colours);

/// Machine.dat, Profiler.cfg, Laser.dat and Machine.stn, in this order, into `Machine`, `Stations`,
/// `ActiveStation` and `LaserNames`.
void LoadMachineData(platform::FileSystem& files, System& system);

/// Machine.stn alone.
void LoadStations(platform::FileSystem& files, const DirectorySet& directories,
                  StationTable& stations, Station& active);

/// IO.msg, then Logic.msg.
void LoadMessageTables(platform::FileSystem& files, const DirectorySet& directories,
                       MessageTables& messages);

/// Control.cnc into the two switches, then Trio.cfg into the timings of `link`.
void LoadLinkOptions(platform::FileSystem& files, const DirectorySet& directories,
                     bool& linkEnabled, bool& logEnabled, LinkSettings& link);

/// Trio.cms; clears `linkEnabled` where the port number is below 1.
void LoadPortSettings(platform::FileSystem& files, const DirectorySet& directories,
                      bool& linkEnabled, LinkSettings& link);

/// Control.cms, the second serial port.
void LoadTransferSettings(platform::FileSystem& files, const DirectorySet& directories,
                          TransferSettings& settings);

/// Plot.cfg, and the plot's switches back to their start: limits and kerf not shown, no plot keys.
void LoadPlotConfig(platform::FileSystem& files, const DirectorySet& directories,
                    PlotSettings& plot, ConsoleState& console);

/// A ".lsr" file; without it the setting stays as it is.
void LoadLaserFile(platform::FileSystem& files, const DirectorySet& directories,
                   std::string_view path, const LaserNameList& names, LaserSetting& setting);

/// The program that Service.cfg names for a service shutdown; empty where it names none that
/// exists.
[[nodiscard]] std::string LoadServiceProgram(platform::FileSystem& files,
                                             const DirectorySet& directories);

}  // namespace torvane::core
