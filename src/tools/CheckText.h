// What a check prints: the report for a person and the one for a program. UTF-8.
#pragma once

#include <string>
#include <vector>

#include "tools/CheckResult.h"

namespace torvane::tools {

/// One program: a line with its verdict, what it is and what is in it, and every error and
/// warning with its block. `withReport` adds the text of Reverse.txt.
[[nodiscard]] std::string ProgramText(const CheckResult& result, bool withReport);

/// One line over all programs.
[[nodiscard]] std::string SummaryText(const std::vector<CheckResult>& results);

}  // namespace torvane::tools
