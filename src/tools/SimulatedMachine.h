// The simulated controller and machine beside the console, in one process.
#pragma once

#include <memory>

#include "platform/EventLoop.h"
#include "platform/FileSystem.h"
#include "simulator/SimulatedController.h"
#include "simulator/SimulatedPort.h"

namespace torvane::tools {

/// Runs in real time, `Speed` machine seconds to a second.
class SimulatedMachine {
 public:
  /// The machine follows the paths of the slots' records in the working directory.
  SimulatedMachine(platform::EventLoop& loop, const platform::FileSystem& files, double speed);

  [[nodiscard]] platform::SerialPort& Port() { return port_; }
  [[nodiscard]] simulator::SimulatedController& Controller() { return controller_; }

 private:
  simulator::SimulatedController controller_;
  simulator::SimulatedPort port_;
};

}  // namespace torvane::tools
