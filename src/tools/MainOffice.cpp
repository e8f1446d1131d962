// torvane-office: the office at the other end of the program transfer line.
#include <iostream>
#include <string>
#include <vector>

#include <unistd.h>

#include "tools/OfficeHost.h"

int main(int argc, char** argv) {
  return torvane::tools::OfficeMain({argv + 1, argv + argc}, STDIN_FILENO, std::cout, std::cerr);
}
