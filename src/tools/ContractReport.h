// What torvane-contract prints.
#pragma once

#include <string>

#include "tools/ContractClauses.h"

namespace torvane::tools {

/// A line a clause, with what was seen where it does not hold, and a line over all.
[[nodiscard]] std::string ContractText(const ContractResult& result);

/// A line for each thing that stays changed.
[[nodiscard]] std::string NotBackText(const ContractResult& result);

/// The report as one JSON object, indented, with a line end after it.
[[nodiscard]] std::string ContractJson(const ContractResult& result);

}  // namespace torvane::tools
