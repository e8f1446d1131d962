// What goes wrong with a transfer is told in Errors.txt: nobody may be there to answer a dialog.
#pragma once

#include <string_view>

#include "core/DirectorySet.h"
#include "platform/FileSystem.h"

namespace torvane::files {

/// Adds a record of three lines ("*** PROGRAM TRANSFER ***", the text, an empty one). Never throws:
/// a disk that cannot take the note must not stop a machine that cuts.
void NoteTransferFault(platform::FileSystem& files, const core::DirectorySet& directories,
                       std::string_view text);

}  // namespace torvane::files
