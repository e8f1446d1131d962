#include "core/SettingsModule.h"

#include <optional>

#include "core/ColourFile.h"
#include "core/ConfigText.h"
#include "core/General.h"
#include "core/LaserFile.h"
#include "core/LastFile.h"
#include "core/LinkFiles.h"
#include "core/MachineFiles.h"
#include "core/MessageFiles.h"
#include "core/PlotFile.h"
#include "core/StationFiles.h"
#include "core/TransferFile.h"

namespace torvane::core {

namespace {

std::string ReadNoted(platform::FileSystem& files, const DirectorySet& directories,
                      std::string_view path) {
  NoteLastFile(files, directories, path);
  return files.ReadFile(path);
}

std::optional<std::string> ReadIfThere(platform::FileSystem& files, const DirectorySet& directories,
                                       std::string_view path) {
  if (!files.FileExists(path)) return std::nullopt;
  return ReadNoted(files, directories, path);
}

}  // namespace

void LoadColours(platform::FileSystem& files, const DirectorySet& directories,
                 ColourTable& colours) {
  colours = ColourTable();
  const std::string path = directories.RootDirectory + "Colour.cfg";
  if (const auto text = ReadIfThere(files, directories, path)) {
    ReadColourFile(*text, path, colours);
  } else {
    files.ReplaceFile(path, ColourFileText(colours));
  }
}

void LoadMachineData(platform::FileSystem& files, System& system) {
  const DirectorySet& directories = system.Directories;
  system.Machine = MachineData();
  const std::string machine = directories.DataDirectory + "Machine.dat";
  ReadMachineFile(ReadNoted(files, directories, machine), machine, system.ImperialUnits,
                  system.Machine);
  if (const auto text =
          ReadIfThere(files, directories, directories.DataDirectory + "Profiler.cfg")) {
    ReadProfilerFile(*text, system.Machine);
  }
  // The list of names begins with the active station's, which only Machine.stn names.
  const auto names = ReadIfThere(files, directories, directories.DataDirectory + "Laser.dat");
  LoadStations(files, directories, system.Stations, system.ActiveStation);
  system.LaserNames = MakeLaserNameList(system.ActiveStation, ReadLaserNames(names.value_or("")));
}

void LoadStations(platform::FileSystem& files, const DirectorySet& directories,
                  StationTable& stations, Station& active) {
  ReadStationFile(ReadNoted(files, directories, directories.DataDirectory + "Machine.stn"),
                  stations, active);
}

void LoadMessageTables(platform::FileSystem& files, const DirectorySet& directories,
                       MessageTables& messages) {
  ReadIoMessages(ReadNoted(files, directories, directories.MessageDirectory + "IO.msg"),
                 messages.IoMessages);
  ReadLogicMessages(ReadNoted(files, directories, directories.MessageDirectory + "Logic.msg"),
                    messages.LogicMessages);
}

void LoadLinkOptions(platform::FileSystem& files, const DirectorySet& directories,
                     bool& linkEnabled, bool& logEnabled, LinkSettings& link) {
  const auto switches = ReadIfThere(files, directories, directories.RootDirectory + "Control.cnc");
  ReadLinkSwitches(switches.value_or(""), linkEnabled, logEnabled);
  ResetLinkTimings(link);
  if (const auto text = ReadIfThere(files, directories, directories.RootDirectory + "Trio.cfg")) {
    ReadLinkTimings(*text, link);
  }
  FinishLinkTimings(link);
}

void LoadPortSettings(platform::FileSystem& files, const DirectorySet& directories,
                      bool& linkEnabled, LinkSettings& link) {
  const std::string path = directories.RootDirectory + "Trio.cms";
  ReadPortFile(ReadNoted(files, directories, path), path, link, linkEnabled);
}

void LoadTransferSettings(platform::FileSystem& files, const DirectorySet& directories,
                          TransferSettings& settings) {
  settings =
      ReadTransferFile(ReadNoted(files, directories, directories.RootDirectory + "Control.cms"));
}

void LoadPlotConfig(platform::FileSystem& files, const DirectorySet& directories,
                    PlotSettings& plot, ConsoleState& console) {
  ResetPlotLook(plot);
  if (const auto text = ReadIfThere(files, directories, directories.RootDirectory + "Plot.cfg")) {
    ReadPlotFile(*text, plot);
  }
  plot.LimitsShown = false;
  plot.KerfShown = false;
  console.PlotKeysActive = false;
  console.PlotKeyMode = 0;
}

void LoadLaserFile(platform::FileSystem& files, const DirectorySet& directories,
                   std::string_view path, const LaserNameList& names, LaserSetting& setting) {
  if (const auto text = ReadIfThere(files, directories, path)) {
    ReadLaserFile(*text, names, setting);
  }
}

std::string LoadServiceProgram(platform::FileSystem& files, const DirectorySet& directories) {
  const auto text = ReadIfThere(files, directories, directories.RootDirectory + "Service.cfg");
  if (!text) return {};
  LineReader lines(*text, {});
  const auto program = Trim(lines.Optional().value_or(""));
  if (program.empty() || program == EndMarker || !files.FileExists(program)) return {};
  return std::string(program);
}

}  // namespace torvane::core
