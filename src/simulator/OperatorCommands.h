// The operator panel in words: what a person types to work the simulated machine.
#pragma once

#include <string>
#include <string_view>

#include "simulator/SimulatedController.h"

namespace torvane::simulator {

struct OperatorAnswer {
  bool Quit = false;
  std::string Text;  ///< a line to show, without an end; empty when there is nothing to say
};

/// Carries out one line: start, hold, release, stop, stop-at RECORD MM, error CODE, bit N, clear,
/// beam [on|off], power-cycle, state, or quit. Anything else changes nothing and is answered with
/// what there is.
[[nodiscard]] OperatorAnswer CarryOutOperatorCommand(std::string_view line,
                                                     SimulatedController& controller);

/// One line: mode, slot and line, position, feed, run time, messages.
[[nodiscard]] std::string DescribeState(SimulatedController& controller);

}  // namespace torvane::simulator
