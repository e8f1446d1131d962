// What a script of keys works on.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "core/System.h"
#include "platform/EventLoop.h"
#include "simulator/SimulatedController.h"
#include "toolkit/Desk.h"
#include "tools/SentLines.h"
#include "tools/SimulatedOffice.h"

namespace torvane::tools {

/// The parts of a running console; all of it outlives the script.
struct ScriptStage {
  platform::EventLoop& Loop;
  core::System& System;
  /// The console's desk, then that of the machine's panel where it has one of its own.
  std::function<std::vector<toolkit::Desk*>()> Desks;
  SentLines& Sent;
  simulator::SimulatedController* Machine = nullptr;  ///< null without --simulate
  /// Ends the program as the operator's &OK does, with that exit status unless it is 0.
  std::function<void(int status)> ShutDown;
  /// The number of the record that a visual restart has highlighted, 0 for none; empty where there
  /// are no such restarts.
  std::function<int()> MarkedRecord = {};
  SimulatedOffice* Office = nullptr;  ///< null without --simulate
};

/// The form of that name that shows, the front one first; null if there is none.
[[nodiscard]] toolkit::Form* ShownForm(const std::vector<toolkit::Desk*>& desks,
                                       const std::string& name);

}  // namespace torvane::tools
