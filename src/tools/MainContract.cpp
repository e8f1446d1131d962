// torvane-contract: what of the contract a controller keeps.
#include <QCoreApplication>
#include <iostream>

#include "platform/ClosedStreams.h"
#include "tools/ContractCommand.h"

int main(int argc, char** argv) {
  torvane::platform::FillClosedStreams();
  const QCoreApplication application(argc, argv);
  return torvane::tools::ContractMain({argv + 1, argv + argc}, std::cout, std::cerr);
}
