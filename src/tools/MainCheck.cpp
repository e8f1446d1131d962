// torvane-check: part programs checked without a machine.
#include <iostream>
#include <string>
#include <vector>

#include <unistd.h>

#include "tools/CheckCommand.h"
#include "tools/ProgramBeside.h"

int main(int argc, char** argv) {
  using namespace torvane::tools;
  const std::vector<std::string> arguments(argv + 1, argv + argc);
  if (NeedsQt(arguments)) {
    // Comes back only where it cannot.
    const std::string fault = BecomeProgram("torvane-check-qt", argv);
    std::cerr << "torvane-check: pictures and JSON need torvane-check-qt: " << fault << '\n';
    return ExitStatus::WrongUse;
  }
  return CheckMain(arguments, {std::cout, std::cerr, ::isatty(STDERR_FILENO) == 1});
}
