// The command word, tried with a move to where the head is: nothing moves, and yet it is an action
// from its word to its end.
#pragma once

#include <optional>
#include <string>

#include "tools/ContractSession.h"

namespace torvane::tools {

/// What is wrong with VR(48), empty where nothing is. `rest` takes its value before anything is
/// written to it. The move goes out only where the head is at its targets by all that can be read,
/// and is stopped where the head leaves them. Throws NotTried where that cannot be had, and
/// TrialEnds.
[[nodiscard]] std::string MoveToWhereTheHeadIs(ContractSession& session,
                                               std::optional<double>& rest);

}  // namespace torvane::tools
