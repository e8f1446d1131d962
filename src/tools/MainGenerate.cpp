// torvane-generate: large part programs for trials.
#include <iostream>
#include <string>
#include <vector>

#include "tools/GenerateCommand.h"

int main(int argc, char** argv) {
  return torvane::tools::GenerateMain({argv + 1, argv + argc}, std::cout, std::cerr);
}
