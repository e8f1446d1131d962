// Errors.txt: faults of the disk that the console lives through.
#pragma once

#include <string_view>

#include "core/DirectorySet.h"
#include "platform/FileSystem.h"

namespace torvane::files {

/// Adds a record to Errors.txt. A note that cannot be written is let go: it must not make a second
/// fault of the first.
void NoteFault(platform::FileSystem& files, const core::DirectorySet& directories,
               std::string_view text);

}  // namespace torvane::files
