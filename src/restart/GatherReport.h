// Gather.txt: what the service staff read of a walk.
#pragma once

#include <span>
#include <string>
#include <string_view>

#include "platform/Clock.h"
#include "restart/GatherState.h"
#include "restart/GatherWalk.h"

namespace torvane::restart {

/// The three head lines.
[[nodiscard]] std::string GatherHead(std::string_view program, std::string_view directory,
                                     const platform::LocalTime& time);

/// An entry for each fault: a blank line, the kind of error, the block, the message. The report of
/// a conversion has the two the other way round.
[[nodiscard]] std::string GatherEntries(std::span<const GatherFault> faults);

/// The state between its two lines of stars.
[[nodiscard]] std::string GatherEnd(const GatherState& state);

}  // namespace torvane::restart
