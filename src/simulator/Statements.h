// Carries out one command line that is no query.
#pragma once

#include <string_view>

#include "simulator/ControllerMemory.h"

namespace torvane::simulator {

/// The forms: VR(n)=value, M<n>=value, TABLE(index,value,...), the mark of a restart table, which
/// is TABLE (lines sent,-999) with a blank, OP(output,value), and the start line of a restart,
/// B<slot>[.digits]R. False for anything else and for a value out of range; nothing
/// is changed then.
bool CarryOut(std::string_view line, ControllerMemory& memory);

}  // namespace torvane::simulator
