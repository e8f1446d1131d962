// torvane-check-qt: torvane-check with pictures and JSON. torvane-check turns into it.
#include <iostream>
#include <string>
#include <vector>

#include <unistd.h>

#include "tools/CheckCommand.h"

int main(int argc, char** argv) {
  using namespace torvane::tools;
  const std::vector<std::string> arguments(argv + 1, argv + argc);
  return CheckMain(arguments, {std::cout, std::cerr, ::isatty(STDERR_FILENO) == 1, &TheQtOutput()});
}
