// The monitoring of the console as a program: `--monitor`.
#pragma once

#include <memory>

#include "console/Console.h"
#include "core/System.h"
#include "monitoring/Monitor.h"
#include "platform/EventLoop.h"
#include "platform/SocketServer.h"
#include "tools/SentLines.h"

namespace torvane::tools {

/// Listens from its making on and says on standard output where. Takes the poll's tick over, which
/// it hands on before it looks. All that it is given outlives it.
class Monitoring {
 public:
  /// Throws RuntimeFault where the place cannot be had.
  Monitoring(const platform::TcpPlace& place, platform::EventLoop& loop, console::Console& console,
             const core::System& system, const SentLines& line);
  ~Monitoring();
  Monitoring(const Monitoring&) = delete;
  Monitoring& operator=(const Monitoring&) = delete;

  /// The console has ended: the clients are told that nothing is known any more.
  void End() { monitor_.End(); }

 private:
  console::Console& console_;
  platform::SocketServer server_;
  monitoring::Monitor monitor_;
};

}  // namespace torvane::tools
