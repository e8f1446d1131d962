// The office at the second port beside the console, in one process.
#pragma once

#include "platform/EventLoop.h"
#include "platform/FileSystem.h"
#include "simulator/OfficePeer.h"
#include "simulator/OfficePort.h"
#include "simulator/OperatorCommands.h"

namespace torvane::tools {

/// Speaks as Control.cms of the working directory says, at its rate.
class SimulatedOffice {
 public:
  SimulatedOffice(platform::EventLoop& loop, const platform::FileSystem& files);

  [[nodiscard]] platform::SerialPort& Port() { return port_; }
  [[nodiscard]] simulator::OfficePeer& Peer() { return peer_; }

  /// One line of what the office understands, as typed to torvane-office.
  simulator::OperatorAnswer Obey(std::string_view command);

 private:
  const platform::FileSystem& files_;
  core::TransferSettings settings_;
  simulator::OfficePeer peer_;
  simulator::OfficePort port_;
};

}  // namespace torvane::tools
