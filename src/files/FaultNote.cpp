#include "files/FaultNote.h"

#include "link/LinkTrace.h"
#include "platform/RuntimeFault.h"

namespace torvane::files {

void NoteFault(platform::FileSystem& files, const core::DirectorySet& directories,
               std::string_view text) {
  try {
    files.AppendFile(directories.ServiceDirectory + "Errors.txt", link::ErrorLogRecord("", text));
  } catch (const platform::RuntimeFault&) {
    // The operator has been warned already, and the disk that failed may be this one.
  }
}

}  // namespace torvane::files
