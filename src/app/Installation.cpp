#include "app/Installation.h"

#include <chrono>
#include <thread>

#include "core/Directories.h"
#include "platform/RuntimeFault.h"

namespace torvane::app {

namespace {

constexpr const char* ControlFileName = "Control.cfg";
constexpr int LookMs = 50;

std::optional<core::ControlFile> ReadControl(const platform::DiskFileSystem& files) {
  try {
    return core::ReadControlFile(files.ReadFile(ControlFileName), ControlFileName);
  } catch (const platform::RuntimeFault&) {
    // The start-up reads the file again, notes it, and ends with what is wrong with it.
    return std::nullopt;
  }
}

void RemoveLeftovers(const platform::DiskFileSystem& files, const core::ControlFile& control) {
  for (const char* name : {"", "Service\\", "Settings\\", "Subs\\One\\", "Subs\\Two\\"}) {
    files.RemoveLeftovers(control.RootDirectory + name);
  }
  for (const std::string& name : files.ListDirectories(control.ProgramRoot)) {
    files.RemoveLeftovers(control.ProgramRoot + name);
  }
}

}  // namespace

platform::FileLock LockInstallation(const platform::DiskFileSystem& files, const std::string& root,
                                    int patienceMs) {
  const std::string path = root + LockFileName;
  for (int waitedMs = 0;; waitedMs += LookMs) {
    if (auto lock = files.LockFile(path)) return std::move(*lock);
    if (waitedMs >= patienceMs) break;
    // Nothing shows yet that could freeze.
    std::this_thread::sleep_for(std::chrono::milliseconds(LookMs));
  }
  throw platform::RuntimeFault(path, "another console works on this installation");
}

HeldInstallation::HeldInstallation(const platform::DiskFileSystem& files, int patienceMs) {
  const auto control = ReadControl(files);
  if (!control || !files.DirectoryExists(control->RootDirectory)) return;
  lock_.emplace(LockInstallation(files, control->RootDirectory, patienceMs));
  RemoveLeftovers(files, *control);
}

}  // namespace torvane::app
