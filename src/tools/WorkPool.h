// Independent pieces of work on all cores.
#pragma once

#include <cstddef>
#include <functional>

namespace torvane::tools {

/// Calls `work` with 0 up to below `count`, each once, from `workers` threads (0: one a core), and
/// comes back when all are done. The first exception of a piece comes out here; pieces that have
/// not begun by then are left.
void RunOnAllCores(std::size_t count, unsigned workers,
                   const std::function<void(std::size_t)>& work);

}  // namespace torvane::tools
