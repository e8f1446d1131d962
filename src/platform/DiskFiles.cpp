#include "platform/DiskFiles.h"

#include <array>
#include <cerrno>
#include <filesystem>
#include <system_error>
#include <utility>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include "platform/RuntimeFault.h"

namespace torvane::platform {

namespace {

/// What an operator or a fitter can act on; the rest in the machine's own words.
constexpr std::array<std::pair<int, const char*>, 10> FaultWords = {{
    {ENOENT, "not found"},
    {ENOTDIR, "not found, a part of its path is no directory"},
    {EACCES, "access denied"},
    {EPERM, "access denied"},
    {EROFS, "the disk cannot be written"},
    {ENOSPC, "the disk is full"},
    {EISDIR, "is a directory"},
    {EEXIST, "is there already"},
    {ENOTEMPTY, "is not empty"},
    {EIO, "the disk does not answer"},
}};

/// Flushes the directory entry of a renamed file. Some file systems cannot, which is no fault.
void FlushDirectory(const std::filesystem::path& directory) {
  const int descriptor = ::open(directory.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
  if (descriptor < 0) return;
  static_cast<void>(::fsync(descriptor));
  ::close(descriptor);
}

/// The file behind a link, so that the link itself is not replaced.
std::string BehindLinks(const std::string& native) {
  std::error_code error;
  if (!std::filesystem::is_symlink(native, error)) return native;
  const auto target = std::filesystem::weakly_canonical(native, error);
  return error ? native : target.string();
}

/// How many names beside a file are tried, each left behind by a power cut or in use elsewhere.
constexpr int BesideNames = 100;

}  // namespace

void ThrowFileFault(std::string_view path, int error) {
  for (const auto& [code, words] : FaultWords) {
    if (code == error) throw RuntimeFault(std::string(path), words);
  }
  throw RuntimeFault(std::string(path), std::generic_category().message(error));
}

DiskFile::DiskFile(std::string_view path, const std::string& native, int flags, unsigned mode)
    : path_(path), descriptor_(::open(native.c_str(), flags | O_CLOEXEC | O_NONBLOCK, mode)) {
  if (descriptor_ < 0) ThrowFileFault(path_, errno);
  struct stat status {};
  if (::fstat(descriptor_, &status) == 0 && S_ISREG(status.st_mode)) return;
  const bool directory = S_ISDIR(status.st_mode);
  ::close(descriptor_);
  if (directory) ThrowFileFault(path_, EISDIR);
  throw RuntimeFault(path_, "is no file");
}

DiskFile DiskFile::Beside(std::string_view path, const std::string& target, std::string& name) {
  for (int number = 0; number < BesideNames; ++number) {
    name = target + (number == 0 ? std::string() : "." + std::to_string(number)) + BesideEnding;
    const int descriptor = ::open(name.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
    if (descriptor >= 0) {
      // Whoever clears leftovers away leaves alone what is still being written.
      static_cast<void>(::flock(descriptor, LOCK_EX | LOCK_NB));
      return DiskFile(path, descriptor);
    }
    if (errno != EEXIST) break;
  }
  ThrowFileFault(path, errno);
}

DiskFile::~DiskFile() {
  if (descriptor_ >= 0) ::close(descriptor_);
}

std::string DiskFile::ReadAll() const {
  struct stat status {};
  if (::fstat(descriptor_, &status) != 0) ThrowFileFault(path_, errno);
  std::string bytes(static_cast<std::size_t>(status.st_size), '\0');
  bytes.resize(ReadAt(bytes.data(), bytes.size(), 0));
  return bytes;
}

std::size_t DiskFile::ReadAt(char* bytes, std::size_t size, std::uint64_t offset) const {
  std::size_t done = 0;
  while (done < size) {
    const auto got =
        ::pread(descriptor_, bytes + done, size - done, static_cast<off_t>(offset + done));
    if (got < 0 && errno == EINTR) continue;
    if (got < 0) ThrowFileFault(path_, errno);
    if (got == 0) break;
    done += static_cast<std::size_t>(got);
  }
  return done;
}

void DiskFile::WriteAll(std::string_view bytes) const {
  while (!bytes.empty()) {
    const auto written = ::write(descriptor_, bytes.data(), bytes.size());
    if (written < 0 && errno == EINTR) continue;
    if (written < 0) ThrowFileFault(path_, errno);
    bytes.remove_prefix(static_cast<std::size_t>(written));
  }
}

void DiskFile::Flush() const {
  if (::fsync(descriptor_) != 0) ThrowFileFault(path_, errno);
}

void DiskFile::Close() {
  if (::close(std::exchange(descriptor_, -1)) != 0) ThrowFileFault(path_, errno);
}

FileBeside::FileBeside(std::string_view path, const std::string& native,
                       const std::function<void(const DiskFile&)>& write, Flushed flushed)
    : path_(path), target_(BehindLinks(native)), flushed_(flushed) {
  struct stat old {};
  const bool was = ::stat(target_.c_str(), &old) == 0;
  if (was && S_ISDIR(old.st_mode)) ThrowFileFault(path, EISDIR);
  // A device or a pipe is never put away for a file.
  if (was && !S_ISREG(old.st_mode)) throw RuntimeFault(path_, "is no file");
  DiskFile file = DiskFile::Beside(path, target_, beside_);
  try {
    if (was) static_cast<void>(::fchmod(file.Descriptor(), old.st_mode & 07777U));
    write(file);
    if (flushed_ == Flushed::Yes) file.Flush();
    file.Close();
  } catch (...) {
    ::unlink(beside_.c_str());
    throw;
  }
}

FileBeside::~FileBeside() {
  if (!beside_.empty()) ::unlink(beside_.c_str());
}

void FileBeside::PutInPlace() {
  if (::rename(beside_.c_str(), target_.c_str()) != 0) ThrowFileFault(path_, errno);
  beside_.clear();
  if (flushed_ == Flushed::Yes) {
    FlushDirectory(std::filesystem::path(target_).parent_path());
  }
}

void ReplaceWhole(std::string_view path, const std::string& native,
                  const std::function<void(const DiskFile&)>& write, Flushed flushed) {
  FileBeside(path, native, write, flushed).PutInPlace();
}

void ReplaceWhole(std::string_view path, const std::string& native, std::string_view bytes,
                  Flushed flushed) {
  ReplaceWhole(
      path, native, [&](const DiskFile& file) { file.WriteAll(bytes); }, flushed);
}

void RemoveLeftover(const std::string& native) {
  const int descriptor = ::open(native.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOFOLLOW);
  if (descriptor < 0) return;
  if (::flock(descriptor, LOCK_EX | LOCK_NB) == 0) ::unlink(native.c_str());
  ::close(descriptor);
}

}  // namespace torvane::platform
