// torvane-sim with its panel in a window: the window's loop drives the host.
#pragma once

#include "tools/SimHost.h"

namespace torvane::tools {

/// Needs an application object. Returns the exit status when the host is over or the panel was
/// closed.
[[nodiscard]] int RunWithPanel(SimHost& host);

}  // namespace torvane::tools
