// What the tests of the contract have in common: controllers as they are before a trial, answers of
// their own, and what was sent and found.
#pragma once

#include <algorithm>
#include <map>
#include <string>
#include <utility>
#include <vector>

#include "FaultyController.h"

namespace torvane::tests {

using simulator::ControllerOptions;
using tools::ClauseState;
using tools::ContractResult;

/// Variables that a trial writes.
inline constexpr int Written[] = {22, 23, 95, 68, 82, 83, 84, 85, 91, 92, 93};

inline std::vector<std::string> NamesOf(const ContractResult& result, ClauseState state) {
  std::vector<std::string> names;
  for (const auto& clause : result.Clauses) {
    if (clause.State == state) names.push_back(clause.Name);
  }
  return names;
}

/// Variables that are all at something else than what a trial writes.
inline ControllerOptions Preset() {
  ControllerOptions options;
  options.Presets = {{22, 7},  {23, 8}, {95, 9}, {68, 75}, {82, 3}, {83, 30},
                     {84, 10}, {85, 4}, {91, 1}, {92, 1},  {93, 1}};
  return options;
}

inline std::vector<double> ValuesOf(FaultyController& controller) {
  std::vector<double> values;
  for (const int number : Written) values.push_back(controller.Variable(number));
  return values;
}

/// The answer to a query of a variable with another value.
inline std::string WithValue(const std::string& line, const std::string& value) {
  return line + "\r\n" + value + "\r\n>>";
}

inline bool Rows(const std::string& line) { return line.starts_with("TABLE("); }
inline bool EndRow(const std::string& line) { return Rows(line) && line.ends_with(",-999)"); }
inline bool RowsOfTheRun(const std::string& line) { return Rows(line) && !EndRow(line); }

/// The answers of a controller to some lines, in place of its own.
inline LineFault Answering(std::map<std::string, std::string> values) {
  LineFault fault;
  fault.Spoils = [values = std::move(values)](const std::string& line, std::string answer, bool) {
    const auto found = values.find(line);
    return found == values.end() ? answer : line + "\r\n" + found->second + "\r\n>>";
  };
  return fault;
}

inline bool Sent(const FaultyController& controller, const std::string& line) {
  return std::find(controller.Lines.begin(), controller.Lines.end(), line) !=
         controller.Lines.end();
}

inline bool SentBeginning(const FaultyController& controller, const std::string& text) {
  return std::any_of(controller.Lines.begin(), controller.Lines.end(),
                     [&](const std::string& line) { return line.starts_with(text); });
}

}  // namespace torvane::tests
