#include "tools/GenerateCommand.h"

#include <CLI/CLI.hpp>
#include <fstream>
#include <ostream>
#include <utility>

#include "tools/Arguments.h"
#include "tools/ProgramGenerator.h"

namespace torvane::tools {

namespace {

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
      ->check(CheckNumber)
      ->capture_default_str();
  app.add_flag("--expressions", program.Expressions,
               "Coordinates by parameters and sums in place of plain numbers");
}

int Write(const GenerateOptions& options, std::ostream& out, std::ostream& errors) {
  const auto text = GenerateProgram(options.Program);
  if (options.File.empty()) {
    out << text;
    return WhenWritten("torvane-generate", out, errors, ExitStatus::Good);
  }
  std::ofstream file(options.File, std::ios::binary);
  file << text << std::flush;
  if (file) return ExitStatus::Good;
  errors << "torvane-generate: " << options.File << ": cannot be written\n";
  return ExitStatus::WrongUse;
}

}  // namespace

int GenerateMain(std::vector<std::string> arguments, std::ostream& out, std::ostream& errors) {
  GenerateOptions options;
  CLI::App app("Writes large part programs for trials.", "torvane-generate");
  DescribeOptions(app, options);
  return RunCommand(app, std::move(arguments), out, errors,
                    [&] { return Write(options, out, errors); });
}

}  // namespace torvane::tools
