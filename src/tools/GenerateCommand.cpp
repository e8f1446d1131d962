#include "tools/GenerateCommand.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <fstream>
#include <ostream>

#include "tools/ProgramGenerator.h"

namespace torvane::tools {

namespace {

constexpr int Good = 0;
constexpr int WrongUse = 2;

struct GenerateOptions {
  GeneratorOptions Program;
  std::string File;
};

void DescribeOptions(CLI::App& app, GenerateOptions& options) {
  auto& program = options.Program;
  app.add_option("FILE", options.File, "The .prg to write; without it, to the standard output");
  app.add_option("--profiles", program.Profiles, "Closed slots, eight blocks each")
      ->check(CLI::Range(0, MostProfiles))
      ->capture_default_str();
  app.add_option("--columns", program.Columns, "Slots beside each other on the sheet")
      ->check(CLI::Range(1, MostProfiles))
      ->capture_default_str();
  app.add_option("--kerf", program.KerfWidth, "Kerf width, mm")
      ->check(CLI::Range(0.0, 4.0))
      ->capture_default_str();
  app.add_flag("--expressions", program.Expressions,
               "Coordinates by parameters and sums in place of plain numbers");
}

}  // namespace

int GenerateMain(std::vector<std::string> arguments, std::ostream& out, std::ostream& errors) {
  GenerateOptions options;
  CLI::App app("Writes large part programs for trials.", "torvane-generate");
  DescribeOptions(app, options);
  try {
    std::reverse(arguments.begin(), arguments.end());
    app.parse(arguments);
  } catch (const CLI::CallForHelp&) {
    out << app.help();
    return Good;
  } catch (const CLI::ParseError& fault) {
    errors << "torvane-generate: " << fault.what()
           << "\nRun torvane-generate --help for its options.\n";
    return WrongUse;
  }
  const auto text = GenerateProgram(options.Program);
  if (options.File.empty()) {
    out << text << std::flush;
    if (out) return Good;
    errors << "torvane-generate: the output cannot be written\n";
    return WrongUse;
  }
  std::ofstream file(options.File, std::ios::binary);
  file << text << std::flush;
  if (file) return Good;
  errors << "torvane-generate: " << options.File << ": cannot be written\n";
  return WrongUse;
}

}  // namespace torvane::tools
