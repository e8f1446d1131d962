// The monitoring of the console as a program: `--monitor`.
#pragma once

#include "console/Console.h"
#include "core/System.h"
#include "monitoring/Monitor.h"
#include "platform/EventLoop.h"
#include "platform/SocketServer.h"

namespace torvane::tools {

/// Listens from its making on and says on standard output where. It observes the console's poll,
/// so it goes after the console; the loop and the records go after it.
class Monitoring {
 public:
  /// Throws RuntimeFault where the place cannot be had.
  Monitoring(const platform::TcpPlace& place, platform::EventLoop& loop, console::Console& console,
             const core::System& system);
  Monitoring(const Monitoring&) = delete;
  Monitoring& operator=(const Monitoring&) = delete;

 private:
  platform::SocketServer server_;
  monitoring::Monitor monitor_;
};

}  // namespace torvane::tools
