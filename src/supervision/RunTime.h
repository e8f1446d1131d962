// The run time of the cycle as the operator reads it.
#pragma once

#include <string>

namespace torvane::supervision {

/// Minutes, a colon and the seconds in two digits. The seconds are rounded after the minutes have
/// been cut off, so that 59.7 s shows as "0:60".
[[nodiscard]] std::string RunTimeText(float runSeconds);

}  // namespace torvane::supervision
