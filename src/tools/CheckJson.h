// What torvane-check found out, for another program to read.
#pragma once

#include <string>
#include <vector>

#include "restart/Rehearsal.h"
#include "tools/CheckResult.h"

namespace torvane::tools {

/// QtOutput::ReportJson.
[[nodiscard]] std::string ReportJson(const std::vector<CheckResult>& results);

/// QtOutput::RehearsalJson.
[[nodiscard]] std::string RehearsalJson(const restart::Rehearsal& rehearsal);

}  // namespace torvane::tools
