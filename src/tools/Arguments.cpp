#include "tools/Arguments.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <utility>

namespace torvane::tools {

bool ReadArguments(CLI::App& app, std::vector<std::string> arguments, std::string& help) {
  try {
    std::reverse(arguments.begin(), arguments.end());
    app.parse(std::move(arguments));
    return true;
  } catch (const CLI::CallForHelp&) {
    help = app.help();
    return false;
  } catch (const CLI::ParseError& fault) {
    throw WrongUse(fault.what());
  }
}

std::string WrongUseText(const std::string& program, const WrongUse& fault) {
  return program + ": " + fault.what() + "\nRun " + program + " --help for its options.\n";
}

}  // namespace torvane::tools
