// A lock on a file, which one process of the machine can hold at a time.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace torvane::platform {

/// Held until it goes, and given up by the operating system when the process ends, however it does:
/// a power cut or a kill never leaves a lock that somebody has to take away. The file stays.
class FileLock {
 public:
  /// The lock on `native`, which is made when it is missing and then holds the number of this
  /// process, for a person who looks. Nothing when another process (or another lock of this one)
  /// holds it. `path` is the system's, for faults: RuntimeFault where the file cannot be made or
  /// its disk knows no locks.
  [[nodiscard]] static std::optional<FileLock> Take(std::string_view path,
                                                    const std::string& native);

  FileLock(FileLock&& other) noexcept;
  FileLock(const FileLock&) = delete;
  FileLock& operator=(const FileLock&) = delete;
  FileLock& operator=(FileLock&&) = delete;
  ~FileLock();

 private:
  explicit FileLock(int descriptor) : descriptor_(descriptor) {}

  int descriptor_;
};

}  // namespace torvane::platform
