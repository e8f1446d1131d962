// torvane-sim: the motion controller and its machine, simulated at the other end of a line.
#include <iostream>
#include <string>
#include <vector>

#include <unistd.h>

#include "tools/SimHost.h"

int main(int argc, char** argv) {
  const std::vector<std::string> arguments(argv + 1, argv + argc);
  return torvane::tools::SimMain(arguments, STDIN_FILENO, std::cout, std::cerr);
}
