// The contract clause by clause, and what a controller makes of each.
#pragma once

#include <string>
#include <vector>

#include "tools/ContractSession.h"

namespace torvane::tools {

enum class ClauseState { Holds, Fails, NotTried };

struct ClauseResult {
  std::string Name;
  std::string Says;  ///< what must hold
  ClauseState State = ClauseState::NotTried;
  std::string Text;  ///< what was seen instead, or why it was not tried
};

struct ContractResult {
  std::vector<ClauseResult> Clauses;    ///< in the order of the table
  std::vector<std::string> NotPutBack;  ///< what stays changed
  /// Why nothing could be tried at all; then there are no clauses.
  std::string Barred;

  /// Every clause was tried, holds, and nothing stays changed.
  [[nodiscard]] bool Holds() const;
};

/// Tries every clause on a controller that is at rest; without a run, those that need none. Puts
/// back what it changed, also after a fault and an interruption. The table of slot 2 holds another
/// program after a run. `interrupt` is handed the function that ends it early.
[[nodiscard]] ContractResult TryContract(
    const ContractParts& parts, const ContractSettings& settings,
    const std::function<void(std::function<void()>)>& interrupt = {});

}  // namespace torvane::tools
