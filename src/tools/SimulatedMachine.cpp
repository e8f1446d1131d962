#include "tools/SimulatedMachine.h"

#include "platform/RuntimeFault.h"
#include "simulator/Installation.h"

namespace torvane::tools {

namespace {

/// Often enough for the lamps of the panel.
constexpr int HeartbeatMs = 20;

simulator::ControllerOptions OptionsFor(const platform::FileSystem& files,
                                        const SimulatedMachineOptions& wanted) {
  simulator::ControllerOptions options;
  try {
    simulator::FollowInstallation(files, options.Machine);
  } catch (const platform::RuntimeFault&) {
    // The console's own start reads the same files in its order, notes each in LastFile.txt, and
    // ends with what is wrong; until then the machine is the one without an installation.
  }
  options.Speed = wanted.Speed;
  options.Presets = wanted.Presets;
  return options;
}

}  // namespace

SimulatedMachine::SimulatedMachine(platform::EventLoop& loop, const platform::FileSystem& files,
                                   const SimulatedMachineOptions& options)
    : controller_(OptionsFor(files, options)),
      port_(loop, controller_, {.Baud = 0, .HeartbeatMs = HeartbeatMs}) {
  if (options.Path.empty()) return;
  path_ = std::make_unique<PathLog>(options.Path);
  path_->Follow(controller_.TheMachine());
}

}  // namespace torvane::tools
