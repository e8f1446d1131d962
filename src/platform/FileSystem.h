// Files and directories by the system's own paths, with backslashes.
#pragma once

#include <algorithm>
#include <cstdint>
#include <functional>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "platform/Clock.h"

namespace torvane::platform {

/// A file of a listing.
struct FileEntry {
  std::string Name;         ///< without path
  std::uint64_t Size = 0;   ///< bytes
  LocalTime Written = {0};  ///< Year 0 where it is not known
};

/// A file of fixed records, numbered from 1. Closed when it goes.
class RecordFile {
 public:
  virtual ~RecordFile() = default;

  /// Fills `bytes` (one record) from record `number`. False past the end; a short last record
  /// counts as past the end.
  virtual bool Read(std::uint32_t number, std::span<char> bytes) = 0;

  /// The same without a copy where the file has the record at hand: its bytes, in `room` or not,
  /// until the next call. Empty past the end.
  [[nodiscard]] virtual std::span<const char> Look(std::uint32_t number, std::span<char> room) {
    return Read(number, room) ? std::span<const char>(room) : std::span<const char>();
  }
};

/// A file that is written and not yet in its place. It leaves no trace when it goes before it is.
class NewFile {
 public:
  virtual ~NewFile() = default;

  /// Replaces the old file, once.
  virtual void PutInPlace() = 0;
};

/// The one place that turns the system's paths into the machine's: "\" or "/" divide, names are
/// found without minding their case, and a path without a root stands under the working directory.
/// Whatever cannot be done throws RuntimeFault, which names the path; tests of existence never do.
class FileSystem {
 public:
  virtual ~FileSystem() = default;

  [[nodiscard]] virtual bool FileExists(std::string_view path) const = 0;
  [[nodiscard]] virtual bool DirectoryExists(std::string_view path) const = 0;
  virtual void MakeDirectory(std::string_view path) = 0;
  virtual void RemoveDirectory(std::string_view path) = 0;

  /// The whole file, byte for byte.
  [[nodiscard]] virtual std::string ReadFile(std::string_view path) const = 0;

  /// The last `most` bytes of the file, or all that it has.
  [[nodiscard]] virtual std::string ReadFileEnd(std::string_view path, std::size_t most) const {
    const std::string whole = ReadFile(path);
    return whole.substr(whole.size() - std::min(whole.size(), most));
  }

  /// Replaces the file whole: written beside, flushed to the disk, renamed. A power cut leaves the
  /// old or the new.
  virtual void ReplaceFile(std::string_view path, std::string_view bytes) = 0;

  /// Puts the next bytes of a file into the buffer; leaves it empty at the end. The buffer comes
  /// with what the call before put there.
  using PartSource = std::function<void(std::string& part)>;

  /// A large file, whose bytes are made part by part and never stand in memory all at once, written
  /// beside its place and flushed. What `next` throws leaves nothing. Another thread may write the
  /// next file meanwhile.
  [[nodiscard]] virtual std::unique_ptr<NewFile> WriteBeside(std::string_view path,
                                                             const PartSource& next);

  /// WriteBeside, and put in place at once.
  void ReplaceFileByParts(std::string_view path, const PartSource& next) {
    WriteBeside(path, next)->PutInPlace();
  }

  /// Replaces the file whole without waiting for the disk, for traces that nothing reads back.
  virtual void OverwriteFile(std::string_view path, std::string_view bytes) = 0;

  /// Adds to the end, making the file if it is missing.
  virtual void AppendFile(std::string_view path, std::string_view bytes) = 0;

  [[nodiscard]] virtual std::uint64_t FileSize(std::string_view path) const = 0;

  /// No fault if it is not there.
  virtual void DeleteFile(std::string_view path) = 0;
  virtual void CopyFile(std::string_view from, std::string_view to) = 0;
  virtual void RenameFile(std::string_view from, std::string_view to) = 0;

  /// Names (without path) of the files that match a pattern such as "C:\ROOT\Data\*.prm", "*" and
  /// "?" being wild, sorted by name without minding case. Nothing when the directory is missing.
  [[nodiscard]] virtual std::vector<std::string> ListFiles(std::string_view pattern) const = 0;

  /// The same with size and date.
  [[nodiscard]] virtual std::vector<FileEntry> ListEntries(std::string_view pattern) const {
    const std::string_view directory = pattern.substr(0, pattern.find_last_of("\\/:") + 1);
    std::vector<FileEntry> entries;
    for (std::string& name : ListFiles(pattern)) {
      const std::uint64_t size = FileSize(std::string(directory) + name);
      entries.push_back({std::move(name), size});
    }
    return entries;
  }

  /// Names of the directories in a directory, sorted likewise, without "." and "..".
  [[nodiscard]] virtual std::vector<std::string> ListDirectories(std::string_view path) const = 0;

  [[nodiscard]] virtual std::unique_ptr<RecordFile> OpenRecords(std::string_view path,
                                                                std::size_t recordSize) const = 0;
};

}  // namespace torvane::platform
