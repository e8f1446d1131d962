// Service\LastFile.txt: the file most recently about to be opened, for a person looking into a
// fault.
#pragma once

#include <string_view>

#include "core/DirectorySet.h"
#include "platform/FileSystem.h"

namespace torvane::core {

/// Every reader of a configuration, table or program file calls it just before it opens the file.
void NoteLastFile(platform::FileSystem& files, const DirectorySet& directories,
                  std::string_view path);

}  // namespace torvane::core
