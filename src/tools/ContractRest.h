// A machine at rest: what it still does, and how the operator is asked to bring it there.
#pragma once

#include <stdexcept>
#include <string>

#include "tools/ContractSession.h"

namespace torvane::tools {

/// What a machine is brought to rest from.
struct RunLeft {
  std::string EndLine;  ///< ends its program; empty where it has its end, or something else may run
  bool Open = false;    ///< what VR(19) says is not enough
};

/// The beam is on or the head moves though nothing of this was to: nothing more is tried.
class TrialEnds : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

/// What a machine with this status still does; empty where nothing runs, is held or stands open,
/// and the beam is off.
[[nodiscard]] std::string NotAtRest(int status);
[[nodiscard]] bool AtRest(ContractSession& session);

/// After a fault in the middle of a run: ends the program, and the operator is asked for the stop,
/// or for the end of the hold, where the machine is not at rest, does not say, or was seen to run
/// the program and not to end it. What it then still does, empty at rest; throws where nothing
/// comes back.
std::string AwaitRest(ContractSession& session, RunLeft left = {});

/// Asks the operator for the stop because of `danger`, and waits for it. Whether it was seen.
bool StopAtOnce(ContractSession& session, const std::string& danger);

/// Why a machine with this status is left alone; empty at rest.
[[nodiscard]] std::string BarredBy(int status);

/// A cycle start may have been pressed that nobody asked for. Throws NotTried where the machine is
/// not at rest, and TrialEnds, with the stop asked for.
void RequireRest(ContractSession& session);

}  // namespace torvane::tools
