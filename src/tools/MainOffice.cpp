// torvane-office: the office at the other end of the program transfer line.
#include <iostream>
#include <string>
#include <vector>

#include <unistd.h>

#include "platform/ClosedStreams.h"
#include "tools/OfficeHost.h"

int main(int argc, char** argv) {
  torvane::platform::FillClosedStreams();
  return torvane::tools::OfficeMain({argv + 1, argv + argc}, STDIN_FILENO, std::cout, std::cerr);
}
