// torvane-journal: sums over the runs of a machine.
#include <iostream>
#include <string>
#include <vector>

#include "tools/JournalCommand.h"

int main(int argc, char** argv) {
  return torvane::tools::JournalMain({argv + 1, argv + argc}, std::cout, std::cerr);
}
