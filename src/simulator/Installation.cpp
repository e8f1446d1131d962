#include "simulator/Installation.h"

#include "core/Directories.h"
#include "core/MachineFiles.h"

namespace torvane::simulator {

void FollowInstallation(const platform::FileSystem& files, std::string_view rootDirectory,
                        const core::MachineData& machine, MachineOptions& options) {
  options.Files = &files;
  options.RootDirectory = rootDirectory;
  if (machine.TravelMinX < machine.TravelMaxX) {
    options.TravelMinX = machine.TravelMinX;
    options.TravelMaxX = machine.TravelMaxX;
  }
  if (machine.TravelMinY < machine.TravelMaxY) {
    options.TravelMinY = machine.TravelMinY;
    options.TravelMaxY = machine.TravelMaxY;
  }
}

void FollowInstallation(const platform::FileSystem& files, MachineOptions& options) {
  constexpr std::string_view ControlPath = "Control.cfg";
  const auto control = core::ReadControlFile(files.ReadFile(ControlPath), ControlPath);
  const std::string machinePath = control.RootDirectory + "Data\\Machine.dat";
  core::MachineData machine;
  core::ReadMachineFile(files.ReadFile(machinePath), machinePath, false, machine);
  FollowInstallation(files, control.RootDirectory, machine, options);
}

}  // namespace torvane::simulator
