// The installation that a console works on: nobody else works on it at the same time.
#pragma once

#include <optional>
#include <string>

#include "platform/DiskFileSystem.h"
#include "platform/FileLock.h"

namespace torvane::app {

/// The file in the root directory that whoever writes into the installation holds a lock on.
inline constexpr const char* LockFileName = "Torvane.lock";

/// How long a console waits for one that is ending, ms: a shutdown on a slow line takes its time,
/// and whoever starts the program anew meanwhile shall not have to do it twice.
inline constexpr int LockPatienceMs = 15000;

/// Throws RuntimeFault where somebody else holds the lock of `root` (with its backslash) and does
/// not give it up within `patienceMs`, or where the root cannot be written.
[[nodiscard]] platform::FileLock LockInstallation(const platform::DiskFileSystem& files,
                                                  const std::string& root, int patienceMs);

/// Made before anything is read or written, held for the life of the console.
class HeldInstallation {
 public:
  /// Takes the lock of the root that Control.cfg of the working directory names, and clears away
  /// what a killed console left half written: in the root, Service, Settings and the program
  /// directories. Without a Control.cfg, or with a root that is not there, it holds nothing: the
  /// start-up has its own words for those.
  explicit HeldInstallation(const platform::DiskFileSystem& files, int patienceMs = LockPatienceMs);

 private:
  std::optional<platform::FileLock> lock_;
};

}  // namespace torvane::app
