#include "tools/Arguments.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <ostream>
#include <utility>

#include "core/Text.h"

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

std::string CheckNumber(const std::string& text) {
  // What cannot be read at all is refused anyway: this is about the number that is none.
  const bool none = core::UpperCase(text).find("NAN") != std::string::npos;
  return none ? text + " is no number" : std::string();
}

std::string CheckNotEmpty(const std::string& text) { return text.empty() ? "it is empty" : ""; }

int WhenWritten(const std::string& program, std::ostream& out, std::ostream& errors, int status) {
  out << std::flush;
  if (out) return status;
  errors << program << ": the output cannot be written\n";
  return ExitStatus::WrongUse;
}

std::string WrongUseText(const std::string& program, const WrongUse& fault) {
  return program + ": " + fault.what() + "\nRun " + program + " --help for its options.\n";
}

int RunCommand(CLI::App& app, std::vector<std::string> arguments, std::ostream& out,
               std::ostream& errors, const std::function<int()>& work) {
  try {
    std::string help;
    if (ReadArguments(app, std::move(arguments), help)) return work();
    out << help;
    return ExitStatus::Good;
  } catch (const WrongUse& fault) {
    errors << WrongUseText(app.get_name(), fault);
    return ExitStatus::WrongUse;
  }
}

}  // namespace torvane::tools
