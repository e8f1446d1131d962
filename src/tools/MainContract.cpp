// torvane-contract: what of the contract a controller keeps.
#include <QCoreApplication>
#include <iostream>

#include <fcntl.h>
#include <unistd.h>

#include "tools/ContractCommand.h"

namespace {

/// An input or output that was closed before the start: its number would be the device's, and what
/// is said to the operator would go to the controller.
void FillClosedOutputs() {
  for (const int number : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) {
    if (::fcntl(number, F_GETFD) == -1) (void)::open("/dev/null", O_RDONLY);
  }
}

}  // namespace

int main(int argc, char** argv) {
  FillClosedOutputs();
  const QCoreApplication application(argc, argv);
  return torvane::tools::ContractMain({argv + 1, argv + argc}, std::cout, std::cerr);
}
