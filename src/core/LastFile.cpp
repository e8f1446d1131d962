#include "core/LastFile.h"

#include <string>

#include "platform/RuntimeFault.h"

namespace torvane::core {

void NoteLastFile(platform::FileSystem& files, const DirectorySet& directories,
                  std::string_view path) {
  try {
    files.OverwriteFile(directories.ServiceDirectory + "LastFile.txt", std::string(path) + "\r\n");
  } catch (const platform::RuntimeFault&) {
    // Nothing reads the note back: a disk that cannot take it must not stop a machine that cuts.
  }
}

}  // namespace torvane::core
