// The simulated controller as a program of its own: a line, an operator at the keyboard, and time.
#pragma once

#include <chrono>
#include <functional>
#include <iosfwd>
#include <memory>
#include <string>
#include <vector>

#include "platform/DiskFileSystem.h"
#include "simulator/SimulatedController.h"
#include "tools/HostInput.h"
#include "tools/PathLog.h"
#include "tools/SimLine.h"
#include "tools/SimOptions.h"

namespace torvane::tools {

/// Works in steps, so that whoever owns a loop of its own can drive it.
class SimHost {
 public:
  /// `input` is the handle of the operator's commands, below 0 for none; events and answers go to
  /// `out`, a line each. Throws RuntimeFault where the line or the installation cannot be had.
  SimHost(const SimOptions& options, int input, std::ostream& out);
  ~SimHost();

  /// Waits up to `longestMs` for something to happen and does what is due. False when it is over.
  bool Step(int longestMs);
  void Finish() { finished_ = true; }

  [[nodiscard]] simulator::SimulatedController& Controller() { return *controller_; }
  /// What becomes readable when the front end says something.
  [[nodiscard]] int LineHandle() const { return line_.Handle(); }

 private:
  [[nodiscard]] int WaitMs(int longestMs) const;
  void CatchUp();
  void Obey(std::string_view line);
  void Say(const std::string& text);

  std::unique_ptr<platform::DiskFileSystem> files_;
  std::unique_ptr<simulator::SimulatedController> controller_;
  std::unique_ptr<PathLog> path_;
  SimLine line_;
  std::ostream& out_;
  HostInput input_;
  std::chrono::steady_clock::time_point last_;
  bool finished_ = false;
};

/// Drives a host until it is over, in place of the plain loop: the panel in a window.
using SimPanel = std::function<int(SimHost&)>;

/// The whole command from its arguments (without the program's own name): exit status 0 at its end,
/// 1 where the line or the installation cannot be had, 2 for wrong use. SIGINT and SIGTERM end it
/// in good order.
[[nodiscard]] int SimMain(const std::vector<std::string>& arguments, int input, std::ostream& out,
                          std::ostream& errors, const SimPanel& panel = {});

}  // namespace torvane::tools
