// What the simulated controller is started with, from its command line.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "simulator/SimulatedController.h"
#include "tools/CheckOptions.h"

namespace torvane::tools {

struct SimOptions {
  std::string PtyLink;  ///< native path of the link to the pseudo-terminal; empty: none
  std::string Device;   ///< native path of a serial device; empty: none
  int Baud = 9600;      ///< of the device
  std::string Root;     ///< native directory of an installation; empty: none
  bool Panel = false;   ///< the operator panel in a window, where there is one
  std::string Path;     ///< native path of a file for the path that was run; empty: none
  simulator::ControllerOptions Controller;
  std::vector<std::string> Replay;  ///< native files of a trace to replay, the oldest first
  std::size_t Session = 0;          ///< the one session of it to replay, from 1; 0: all
};

/// What "N=VALUE" says. Throws WrongUse where it is no variable with a number.
[[nodiscard]] simulator::PresetVariable ReadPreset(const std::string& text);

/// The options of a command line, given without the name of the program. Where help is asked for,
/// `help` takes its text and the options mean nothing. Exactly one of --pty and --device must be
/// given. `panel`: --panel is offered. Throws WrongUse.
[[nodiscard]] SimOptions ReadSimOptions(std::vector<std::string> arguments, bool panel,
                                        std::string& help);

}  // namespace torvane::tools
