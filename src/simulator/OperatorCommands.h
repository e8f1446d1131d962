// The operator panel in words: what a person types to work the simulated machine.
#pragma once

#include <string>
#include <string_view>

#include "simulator/SimulatedController.h"

namespace torvane::simulator {

struct OperatorAnswer {
  bool Quit = false;
  std::string Text;   ///< a line to show, without an end; empty when there is nothing to say
  bool Known = true;  ///< false for a line whose first word is none of the commands
};

/// The words there are.
inline constexpr std::string_view OperatorWords =
    "start, hold, release, stop, stop-at RECORD MM, error CODE, bit N, clear, beam [on|off], "
    "cycle on|off, silence on|off, percent LINE, set N VALUE, get N, later N VALUE SECONDS, "
    "reference fail|good, storage ..., power-cycle, state, quit";

/// Carries out one line of OperatorWords:
///   stop-at   stops the cycle so many mm along the element of a record of ".krw"
///   cycle     bit 8192 of the status word alone
///   silence   a dead line
///   percent   refuses the next line that begins so
///   set, get  a variable, as if a line had written it
///   later     a variable changes by itself, seconds of the machine from now
///   reference the next references fail, or not
///   storage   good, read-only [PATH], gone [PATH], full-after BYTES [PATH], ready-at TEST DRIVE
/// Anything else changes nothing and is answered with
/// what there is.
[[nodiscard]] OperatorAnswer CarryOutOperatorCommand(std::string_view line,
                                                     SimulatedController& controller);

/// One line: mode, slot and line, position, feed, run time, messages.
[[nodiscard]] std::string DescribeState(SimulatedController& controller);

}  // namespace torvane::simulator
