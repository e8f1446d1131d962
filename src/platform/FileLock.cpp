#include "platform/FileLock.h"

#include <cerrno>
#include <utility>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include "platform/DiskFiles.h"

namespace torvane::platform {

namespace {

/// For a person who looks into the file; a full disk is no reason not to start.
void WriteProcessNumber(int descriptor) {
  const std::string text = std::to_string(::getpid()) + "\r\n";
  if (::ftruncate(descriptor, 0) != 0) return;
  static_cast<void>(!::write(descriptor, text.data(), text.size()));
}

}  // namespace

std::optional<FileLock> FileLock::Take(std::string_view path, const std::string& native) {
  constexpr int Flags = O_RDWR | O_CREAT | O_CLOEXEC | O_NONBLOCK | O_NOFOLLOW;
  const int descriptor = ::open(native.c_str(), Flags, 0666);
  if (descriptor < 0) ThrowFileFault(path, errno);
  FileLock lock(descriptor);
  if (::flock(descriptor, LOCK_EX | LOCK_NB) != 0) {
    if (errno == EWOULDBLOCK) return std::nullopt;
    ThrowFileFault(path, errno);
  }
  WriteProcessNumber(descriptor);
  return lock;
}

FileLock::FileLock(FileLock&& other) noexcept : descriptor_(std::exchange(other.descriptor_, -1)) {}

FileLock::~FileLock() {
  if (descriptor_ >= 0) ::close(descriptor_);
}

}  // namespace torvane::platform
