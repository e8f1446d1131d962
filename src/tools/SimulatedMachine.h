// The simulated controller and machine beside the console, in one process.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "platform/EventLoop.h"
#include "platform/FileSystem.h"
#include "simulator/SimulatedController.h"
#include "simulator/SimulatedPort.h"
#include "tools/PathLog.h"

namespace torvane::tools {

struct SimulatedMachineOptions {
  double Speed = 1;  ///< machine seconds per second
  std::vector<simulator::PresetVariable> Presets;
  std::string Path;  ///< native path of a file for the path that was run; empty: none
};

/// Runs in real time, `Speed` machine seconds to a second.
class SimulatedMachine {
 public:
  /// The machine follows the paths of the slots' records in the working directory. Throws
  /// RuntimeFault where the file of the path cannot be made.
  SimulatedMachine(platform::EventLoop& loop, const platform::FileSystem& files,
                   const SimulatedMachineOptions& options);

  [[nodiscard]] platform::SerialPort& Port() { return port_; }
  [[nodiscard]] simulator::SimulatedController& Controller() { return controller_; }

 private:
  simulator::SimulatedController controller_;
  simulator::SimulatedPort port_;
  std::unique_ptr<PathLog> path_;
};

}  // namespace torvane::tools
