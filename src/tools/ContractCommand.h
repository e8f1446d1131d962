// torvane-contract: the front end's side of the line, played against any controller.
#pragma once

#include <iosfwd>
#include <string>
#include <vector>

#include "platform/SerialPort.h"
#include "tools/ContractClauses.h"

namespace torvane::tools {

struct ContractOptions {
  std::string Device;         ///< native path
  platform::PortSetup Setup;  ///< of the line; of an installation where one was named
  ContractSettings Settings;
  bool Json = false;
};

/// Exit statuses of the command.
namespace ContractStatus {
inline constexpr int Holds = 0;
inline constexpr int Fails =
    1;  ///< a clause fails or could not be tried, or something stays changed
inline constexpr int NoTrial =
    2;  ///< wrong use, no device, no controller, one not at rest, or a report nobody can read
}  // namespace ContractStatus

/// The options of a command line, given without the name of the program. Where help is asked for,
/// `help` takes its text. Throws WrongUse, and RuntimeFault for an installation without its files.
[[nodiscard]] ContractOptions ReadContractOptions(std::vector<std::string> arguments,
                                                  std::string& help);

/// The whole command; needs an application object. What is asked of the operator goes to `errors`
/// with --json, so that `out` holds nothing else.
[[nodiscard]] int ContractMain(const std::vector<std::string>& arguments, std::ostream& out,
                               std::ostream& errors);

}  // namespace torvane::tools
