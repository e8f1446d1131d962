// The command line of the console.
#pragma once

#include <map>
#include <optional>
#include <string>
#include <vector>

#include "platform/SocketServer.h"
#include "simulator/SimulatedController.h"

namespace torvane::tools {

/// Width and height of the console's window, pixels.
struct WindowSize {
  int Width = 1280;
  int Height = 1024;
};

struct TorvaneOptions {
  std::string Root = ".";                          ///< native path of the folder with Control.cfg
  bool Simulate = false;                           ///< the simulated machine in the process
  double Speed = 1;                                ///< machine seconds per second
  std::vector<simulator::PresetVariable> Presets;  ///< variables of the simulated machine
  std::string Path;                    ///< native path of a file for the path that was run
  std::map<int, std::string> Devices;  ///< port number to device
  std::map<char, std::string> Drives;  ///< drive letter to folder
  bool Panel = false;                  ///< the machine's panel even without a display
  bool OwnsMachine = false;            ///< shutting down ends the operating system's session
  std::string SelectDirectory;
  std::string SelectProgram;
  bool Start = false;         ///< press cycle start on the simulated machine
  bool ExitAfterRun = false;  ///< shut down when the run has ended
  std::string Screenshot;     ///< a PNG file, or a folder for a picture of each moment
  std::string Keys;           ///< native path of a script of keys to play
  std::optional<platform::TcpPlace> Monitor;  ///< where monitoring clients connect; none: nowhere
  std::optional<WindowSize> Window;           ///< a window of that size instead of the full screen
};

/// Reads the command line. Nothing when the program is to end at once (help, or a wrong use, which
/// has been told); `exitStatus` is set then: 0 or 2.
[[nodiscard]] std::optional<TorvaneOptions> ReadTorvaneOptions(int argc, const char* const* argv,
                                                               int& exitStatus);

}  // namespace torvane::tools
