// The office as a program of its own: a line, a person at the keyboard, and time.
#pragma once

#include <chrono>
#include <fstream>
#include <iosfwd>
#include <string>
#include <vector>

#include "platform/DiskFileSystem.h"
#include "simulator/OfficePeer.h"
#include "tools/HostInput.h"
#include "tools/SimLine.h"

namespace torvane::tools {

struct OfficeOptions {
  std::string PtyLink;   ///< native path of the link to the pseudo-terminal; empty: none
  std::string Device;    ///< native path of a serial device; empty: none
  int Baud = 9600;       ///< of the line; a pseudo-terminal is paced by it too
  std::string Settings;  ///< native path of a port file for the frame; empty: the common one
  std::string Log;       ///< native path of a file for what comes; empty: none
};

/// The options of a command line, given without the name of the program; `help` takes the text
/// where it is asked for. Throws WrongUse.
[[nodiscard]] OfficeOptions ReadOfficeOptions(std::vector<std::string> arguments,
                                              std::string& help);

class OfficeHost {
 public:
  /// Throws RuntimeFault where the line, the port file or the log cannot be had.
  OfficeHost(const OfficeOptions& options, int keyboard, std::ostream& out);

  /// Waits up to `longestMs` for something to happen and does what is due. False when it is over.
  bool Step(int longestMs);

 private:
  void Obey(const std::string& typed);
  void ShowLines();
  void Say(const std::string& text) { out_ << text << '\n' << std::flush; }

  platform::DiskFileSystem files_;
  simulator::OfficePeer office_;
  SimLine line_;
  std::ofstream log_;
  std::ostream& out_;
  HostInput input_;
  std::chrono::steady_clock::time_point last_;
  platform::PortLines shown_{true, true, true};
  int breaks_ = 0;
  bool finished_ = false;
};

/// The whole command: exit status 0 at its end, 1 where the line or a file cannot be had, 2 for
/// wrong use.
[[nodiscard]] int OfficeMain(const std::vector<std::string>& arguments, int keyboard,
                             std::ostream& out, std::ostream& errors);

}  // namespace torvane::tools
