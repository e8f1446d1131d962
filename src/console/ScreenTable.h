// Every screen of the console, one row each.
#pragma once

#include <vector>

#include "console/ScreenTraits.h"

namespace torvane::console {

/// To add a screen: its name in core/ScreenNames.h, its class, and its row here.
[[nodiscard]] const std::vector<ScreenRow>& ScreenTable();

}  // namespace torvane::console
