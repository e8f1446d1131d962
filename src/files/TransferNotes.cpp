#include "files/TransferNotes.h"

#include <string>

#include "platform/RuntimeFault.h"

namespace torvane::files {

void NoteTransferFault(platform::FileSystem& files, const core::DirectorySet& directories,
                       std::string_view text) {
  try {
    files.AppendFile(directories.ServiceDirectory + "Errors.txt",
                     "*** PROGRAM TRANSFER ***\r\nError Text :  " + std::string(text) + "\r\n\r\n");
  } catch (const platform::RuntimeFault&) {
    // The disk that failed may be the one of the note.
  }
}

}  // namespace torvane::files
