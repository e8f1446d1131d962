// torvane-check: part programs checked without a machine.
#include <iostream>
#include <string>
#include <vector>

#include <unistd.h>

#include "tools/CheckCommand.h"

int main(int argc, char** argv) {
  const std::vector<std::string> arguments(argv + 1, argv + argc);
  return torvane::tools::CheckMain(arguments, {std::cout, std::cerr, ::isatty(STDERR_FILENO) == 1});
}
