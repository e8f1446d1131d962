#include "tools/SimulatedMachine.h"

#include "simulator/Installation.h"

namespace torvane::tools {

namespace {

/// Often enough for the lamps of the panel.
constexpr int HeartbeatMs = 20;

simulator::ControllerOptions OptionsFor(const platform::FileSystem& files, double speed) {
  simulator::ControllerOptions options;
  simulator::FollowInstallation(files, options.Machine);
  options.Speed = speed;
  return options;
}

}  // namespace

SimulatedMachine::SimulatedMachine(platform::EventLoop& loop, const platform::FileSystem& files,
                                   double speed)
    : controller_(OptionsFor(files, speed)),
      port_(loop, controller_, {.Baud = 0, .HeartbeatMs = HeartbeatMs}) {}

}  // namespace torvane::tools
