// torvane-sim: the motion controller and its machine, simulated at the other end of a line.
#include <iostream>
#include <string>
#include <vector>

#include <unistd.h>

#include "platform/ClosedStreams.h"
#include "toolkit/Application.h"
#include "tools/SimHost.h"
#include "tools/SimPanelLoop.h"

int main(int argc, char** argv) {
  torvane::platform::FillClosedStreams();
  const std::vector<std::string> arguments(argv + 1, argv + argc);
  const auto panel = [&](torvane::tools::SimHost& host) {
    torvane::toolkit::Application application(argc, argv);
    return torvane::tools::RunWithPanel(host);
  };
  return torvane::tools::SimMain(arguments, STDIN_FILENO, std::cout, std::cerr, panel);
}
