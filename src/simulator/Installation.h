// Ties the simulated machine to an installation: its travel, and the records whose path it follows.
#pragma once

#include "core/MachineData.h"
#include "platform/FileSystem.h"
#include "simulator/MachineEvents.h"

namespace torvane::simulator {

/// `rootDirectory` as the front end has it, ending in its backslash. `files` must outlive the
/// machine. Limits of 0 and 0 are no travel and leave the jogs free.
void FollowInstallation(const platform::FileSystem& files, std::string_view rootDirectory,
                        const core::MachineData& machine, MachineOptions& options);

/// The same for an installation in the working directory of `files`: by way of its Control.cfg and
/// its Machine.dat. Throws RuntimeFault where one of them is missing or too short.
void FollowInstallation(const platform::FileSystem& files, MachineOptions& options);

}  // namespace torvane::simulator
