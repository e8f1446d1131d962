// Every option of every program is in the manual's table of that program, and no other.
#include <array>
#include <cstdio>
#include <filesystem>
#include <map>
#include <regex>
#include <set>
#include <sstream>

#include <gtest/gtest.h>

#include "Manual.h"

namespace torvane::tests {
namespace {

/// What a program says of its options.
std::string HelpOf(const std::string& program) {
  const std::string command = "QT_QPA_PLATFORM=offscreen '" + program + "' --help 2>&1";
  std::FILE* const pipe = ::popen(command.c_str(), "r");
  if (pipe == nullptr) return {};
  std::string help;
  std::array<char, 4096> piece{};
  while (const std::size_t got = std::fread(piece.data(), 1, piece.size(), pipe))
    help.append(piece.data(), got);
  ::pclose(pipe);
  return help;
}

/// "--root", and "DIRECTORY" of what comes without a name.
std::set<std::string> OptionsIn(const std::string& help) {
  const std::regex option(R"(^ +(?:-\w, ?)?(--[a-z][a-z-]*))");
  const std::regex place(R"(^  ([A-Z][A-Z_]*)\b)");
  std::set<std::string> options;
  std::istringstream in(help);
  std::string line;
  bool places = false;
  while (std::getline(in, line)) {
    if (line.empty() || line.front() != ' ') places = line.starts_with("Positionals");
    std::smatch found;
    if (std::regex_search(line, found, option)) options.insert(found[1]);
    if (places && std::regex_search(line, found, place)) options.insert(found[1]);
  }
  options.erase("--help");
  return options;
}

/// Program to its options, from the programs of this build.
const std::map<std::string, std::set<std::string>>& Programs() {
  static const auto all = [] {
    std::map<std::string, std::set<std::string>> programs;
    std::istringstream in(TORVANE_PROGRAMS);
    std::string path;
    while (std::getline(in, path, '|'))
      if (!path.empty())
        programs[std::filesystem::path(path).filename().string()] = OptionsIn(HelpOf(path));
    return programs;
  }();
  return all;
}

/// Options by the section of programs.adoc that tells them.
std::map<std::string, std::set<std::string>> OptionsTold() {
  std::map<std::string, std::set<std::string>> told;
  for (const ManualLine& line : ManualLines())
    if (line.File == "programs.adoc") told[line.Heading];
  for (const Quote& quote : Quotes("option"))
    if (quote.Line.File == "programs.adoc") told[quote.Line.Heading].insert(quote.Text);
  return told;
}

TEST(ManualOptions, EveryProgramHasItsSectionAndAllItsOptions) {
  const auto told = OptionsTold();
  EXPECT_GE(Programs().size(), 6U);
  for (const auto& [program, options] : Programs()) {
    const auto section = told.find(program);
    if (section == told.end()) {
      ADD_FAILURE() << "docs/manual/programs.adoc has no section for " << program
                    << ": add\n\n=== " << program << "\n\nWhat it is for.\n\n[cols=\"1,3\"]\n|===\n"
                    << "| [.option]#--an-option# | what it does\n|===\n";
      continue;
    }
    for (const std::string& option : options)
      EXPECT_TRUE(section->second.count(option))
          << "docs/manual/programs.adoc, section " << program << ": add the row\n| [.option]#"
          << option << "# | what it does\n";
  }
}

TEST(ManualOptions, EveryOptionThatIsToldIsThere) {
  const auto& programs = Programs();
  for (const auto& [section, options] : OptionsTold()) {
    const auto program = programs.find(section);
    if (program == programs.end()) continue;
    for (const std::string& option : options)
      EXPECT_TRUE(program->second.count(option))
          << "docs/manual/programs.adoc: " << section << " has no " << option << " any more";
  }
  for (const Quote& quote : Quotes("option")) {
    bool known = false;
    for (const auto& [program, options] : programs) known = known || options.count(quote.Text) != 0;
    EXPECT_TRUE(known) << quote.Where() << ": no program has " << quote.Text;
  }
}

}  // namespace
}  // namespace torvane::tests
