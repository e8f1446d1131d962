#include "platform/DiskFileSystem.h"

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <functional>
#include <stdexcept>
#include <system_error>
#include <utility>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include "platform/DiskFiles.h"
#include "platform/RuntimeFault.h"

namespace torvane::platform {

namespace {

namespace fs = std::filesystem;

/// Records are read in runs of about this many bytes.
constexpr std::size_t WindowBytes = 64 * 1024;

/// Fixed records through one window, so that a walk over the file reads it once.
class DiskRecordFile final : public RecordFile {
 public:
  DiskRecordFile(std::string_view path, const std::string& native, std::size_t recordSize)
      : file_(path, native, O_RDONLY),
        recordSize_(recordSize),
        window_(std::max<std::size_t>(1, WindowBytes / recordSize) * recordSize) {}

  bool Read(std::uint32_t number, std::span<char> bytes) override {
    const auto record = Look(number, bytes);
    std::copy(record.begin(), record.end(), bytes.begin());
    return !record.empty();
  }

  std::span<const char> Look(std::uint32_t number, std::span<char> room) override {
    if (room.size() != recordSize_) throw std::logic_error("a record read of the wrong size");
    if (number == 0) return {};
    const std::uint64_t offset = std::uint64_t{number - 1} * recordSize_;
    if (offset < start_ || offset + recordSize_ > start_ + filled_) {
      start_ = offset;
      filled_ = file_.ReadAt(window_.data(), window_.size(), offset);
      if (filled_ < recordSize_) return {};
    }
    return {window_.data() + (offset - start_), recordSize_};
  }

 private:
  DiskFile file_;
  std::size_t recordSize_;
  std::vector<char> window_;
  std::uint64_t start_ = 0;
  std::size_t filled_ = 0;
};

/// Names of a native directory whose entries `wanted` takes, as the system writes them, sorted.
/// A name that the system could not write back (with a backslash in it) is left out.
std::vector<std::string> ListNames(const std::string& directory,
                                   const std::function<bool(const fs::directory_entry&)>& wanted) {
  std::vector<std::string> names;
  std::error_code error;
  for (fs::directory_iterator it(directory, error), end; !error && it != end; it.increment(error)) {
    std::string name = ToSystemName(it->path().filename().string());
    if (name.find('\\') == std::string::npos && wanted(*it)) names.push_back(std::move(name));
  }
  std::sort(names.begin(), names.end(), [](const std::string& left, const std::string& right) {
    const int order = CompareNames(left, right);
    return order != 0 ? order < 0 : left < right;
  });
  return names;
}

}  // namespace

DiskFileSystem::DiskFileSystem(std::string workingDirectory,
                               const std::map<char, std::string>& drives)
    : paths_(std::move(workingDirectory), drives) {}

std::string DiskFileSystem::ToSystemPath(std::string_view nativePath) {
  std::string path = ToSystemName(nativePath);
  std::replace(path.begin(), path.end(), '/', '\\');
  return path;
}

std::string DiskFileSystem::ToWholeSystemPath(std::string_view nativePath) {
  std::error_code error;
  const fs::path whole = fs::absolute(nativePath, error);
  if (error) throw RuntimeFault(ToSystemPath(nativePath), "the working directory is not there");
  return ToSystemPath(whole.string());
}

void DiskFileSystem::SetDrive(char letter, std::string nativeDirectory) {
  paths_.SetDrive(letter, std::move(nativeDirectory));
}

std::string DiskFileSystem::Native(std::string_view path) const {
  std::string native = paths_.Resolve(path);
  if (!native.empty()) return native;
  if (path.empty()) throw RuntimeFault("", "a file without a name was asked for");
  const bool drive = path.size() >= 2 && path[1] == ':';
  throw RuntimeFault(std::string(path), drive ? "there is no such drive" : "is no path");
}

bool DiskFileSystem::FileExists(std::string_view path) const {
  const std::string native = paths_.Resolve(path);
  std::error_code error;
  return !native.empty() && fs::is_regular_file(native, error);
}

bool DiskFileSystem::DirectoryExists(std::string_view path) const {
  const std::string native = paths_.Resolve(path);
  std::error_code error;
  return !native.empty() && fs::is_directory(native, error);
}

void DiskFileSystem::MakeDirectory(std::string_view path) {
  std::error_code error;
  if (fs::create_directory(Native(path), error)) return;
  ThrowFileFault(path, error ? error.value() : EEXIST);
}

void DiskFileSystem::RemoveDirectory(std::string_view path) {
  const std::string native = Native(path);
  if (::rmdir(native.c_str()) == 0) return;
  const int fault = errno;
  // A link to a directory: the link goes, and what it leads to stays.
  if (fault == ENOTDIR && ::unlink(native.c_str()) == 0) return;
  ThrowFileFault(path, fault);
}

std::string DiskFileSystem::ReadFile(std::string_view path) const {
  return DiskFile(path, Native(path), O_RDONLY).ReadAll();
}

std::string DiskFileSystem::ReadFileEnd(std::string_view path, std::size_t most) const {
  const DiskFile file(path, Native(path), O_RDONLY);
  const std::uint64_t size = FileSize(path);
  std::string end(std::min<std::uint64_t>(size, most), '\0');
  end.resize(file.ReadAt(end.data(), end.size(), size - end.size()));
  return end;
}

void DiskFileSystem::ReplaceFile(std::string_view path, std::string_view bytes) {
  ReplaceWhole(path, Native(path), bytes);
}

std::unique_ptr<NewFile> DiskFileSystem::WriteBeside(std::string_view path,
                                                     const PartSource& next) {
  return std::make_unique<FileBeside>(path, Native(path), [&](const DiskFile& file) {
    std::string part;
    for (next(part); !part.empty(); next(part)) file.WriteAll(part);
  });
}

void DiskFileSystem::OverwriteFile(std::string_view path, std::string_view bytes) {
  ReplaceWhole(path, Native(path), bytes, Flushed::No);
}

void DiskFileSystem::AppendFile(std::string_view path, std::string_view bytes) {
  DiskFile file(path, Native(path), O_WRONLY | O_CREAT | O_APPEND);
  file.WriteAll(bytes);
  file.Close();
}

std::uint64_t DiskFileSystem::FileSize(std::string_view path) const {
  const std::string native = Native(path);
  std::error_code error;
  const auto size = fs::file_size(native, error);
  if (error) ThrowFileFault(path, error.value());
  return size;
}

void DiskFileSystem::DeleteFile(std::string_view path) {
  const std::string native = Native(path);
  if (::unlink(native.c_str()) == 0 || errno == ENOENT || errno == ENOTDIR) return;
  ThrowFileFault(path, errno);
}

void DiskFileSystem::CopyFile(std::string_view from, std::string_view to) {
  const std::string source = Native(from);
  const std::string target = Native(to);
  const std::string bytes = DiskFile(from, source, O_RDONLY).ReadAll();
  std::error_code error;
  if (fs::equivalent(source, target, error)) return;
  ReplaceWhole(to, target, bytes);
}

void DiskFileSystem::RenameFile(std::string_view from, std::string_view to) {
  const std::string source = Native(from);
  std::string target = Native(to);
  std::error_code error;
  if (!fs::exists(fs::symlink_status(source, error))) ThrowFileFault(from, ENOENT);
  if (fs::equivalent(source, target, error)) {
    // The same file under another case: it takes the name as written.
    const auto name = to.substr(to.find_last_of("\\/:") + 1);
    target = (fs::path(target).parent_path() / ToNativeName(name)).string();
  }
  if (::rename(source.c_str(), target.c_str()) != 0) ThrowFileFault(to, errno);
}

std::vector<std::string> DiskFileSystem::ListFiles(std::string_view pattern) const {
  const auto split = pattern.find_last_of("\\/:");
  const auto names = split == std::string_view::npos ? 0 : split + 1;
  const std::string_view wild = pattern.substr(names);
  const std::string native = paths_.Resolve(names == 0 ? "." : pattern.substr(0, names));
  if (native.empty()) return {};
  return ListNames(native, [wild](const fs::directory_entry& entry) {
    std::error_code error;
    return entry.is_regular_file(error) &&
           MatchesPattern(ToSystemName(entry.path().filename().string()), wild);
  });
}

std::vector<FileEntry> DiskFileSystem::ListEntries(std::string_view pattern) const {
  const std::string_view directory = pattern.substr(0, pattern.find_last_of("\\/:") + 1);
  const std::string native = paths_.Resolve(directory.empty() ? "." : directory) + "/";
  std::vector<FileEntry> entries;
  for (std::string& name : ListFiles(pattern)) {
    struct stat status {};
    FileEntry entry;
    // A file that goes between the listing and here has no size and no date.
    if (::stat((native + ToNativeName(name)).c_str(), &status) == 0 ||
        ::stat((native + name).c_str(), &status) == 0) {
      entry.Size = static_cast<std::uint64_t>(status.st_size);
      entry.Written = LocalTimeOf(status.st_mtime);
    }
    entry.Name = std::move(name);
    entries.push_back(std::move(entry));
  }
  return entries;
}

std::vector<std::string> DiskFileSystem::ListDirectories(std::string_view path) const {
  const std::string native = paths_.Resolve(path);
  if (native.empty()) return {};
  return ListNames(native, [](const fs::directory_entry& entry) {
    std::error_code error;
    return entry.is_directory(error);
  });
}

std::optional<FileLock> DiskFileSystem::LockFile(std::string_view path) const {
  return FileLock::Take(path, Native(path));
}

void DiskFileSystem::RemoveLeftovers(std::string_view directory) const {
  const std::string native = paths_.Resolve(directory);
  if (native.empty()) return;
  std::error_code error;
  for (fs::directory_iterator it(native, error), end; !error && it != end; it.increment(error)) {
    std::error_code kind;
    if (it->path().native().ends_with(BesideEnding) && it->is_regular_file(kind) &&
        !it->is_symlink(kind)) {
      RemoveLeftover(it->path().native());
    }
  }
}

std::unique_ptr<RecordFile> DiskFileSystem::OpenRecords(std::string_view path,
                                                        std::size_t recordSize) const {
  if (recordSize == 0) throw std::logic_error("records of no size");
  return std::make_unique<DiskRecordFile>(path, Native(path), recordSize);
}

}  // namespace torvane::platform
