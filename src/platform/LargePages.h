// A hint to the memory manager for one large block that is about to be filled.
#pragma once

#include <cstddef>

namespace torvane::platform {

/// Asks for large pages under the block: filling tens of megabytes then costs a few page faults
/// instead of thousands. Only a hint; without it, or where the system knows none, nothing changes.
void PreferLargePages(const void* block, std::size_t bytes);

}  // namespace torvane::platform
