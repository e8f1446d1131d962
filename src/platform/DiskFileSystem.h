// The files of this machine behind the system's own paths.
#pragma once

#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/FileLock.h"
#include "platform/FileSystem.h"
#include "platform/NativePaths.h"

namespace torvane::platform {

/// Path forms: "C:\ROOT\X" on a drive of the table ("C" leads to the native root unless mapped
/// otherwise), "\home\x" from the native root, anything else under the working directory. Names
/// are Latin-1 in the system and UTF-8 on the disk.
class DiskFileSystem final : public FileSystem {
 public:
  /// `workingDirectory` and the directories of the drives are native paths.
  explicit DiskFileSystem(std::string workingDirectory,
                          const std::map<char, std::string>& drives = {});

  /// A native path (of a command line, say) as a system path: "/home/x" gives "\home\x".
  [[nodiscard]] static std::string ToSystemPath(std::string_view nativePath);
  /// The same, from the root on. Throws RuntimeFault for a relative one where the working directory
  /// is gone.
  [[nodiscard]] static std::string ToWholeSystemPath(std::string_view nativePath);

  /// The native path that a system path leads to, empty where none can.
  [[nodiscard]] std::string NativePath(std::string_view path) const { return paths_.Resolve(path); }

  /// A drive comes (with its native directory) or goes (with an empty one).
  void SetDrive(char letter, std::string nativeDirectory);

  [[nodiscard]] bool FileExists(std::string_view path) const override;
  [[nodiscard]] bool DirectoryExists(std::string_view path) const override;
  void MakeDirectory(std::string_view path) override;
  /// Only an empty directory goes.
  void RemoveDirectory(std::string_view path) override;
  [[nodiscard]] std::string ReadFile(std::string_view path) const override;
  [[nodiscard]] std::string ReadFileEnd(std::string_view path, std::size_t most) const override;
  void ReplaceFile(std::string_view path, std::string_view bytes) override;
  [[nodiscard]] std::unique_ptr<NewFile> WriteBeside(std::string_view path,
                                                     const PartSource& next) override;
  void OverwriteFile(std::string_view path, std::string_view bytes) override;
  void AppendFile(std::string_view path, std::string_view bytes) override;
  [[nodiscard]] std::uint64_t FileSize(std::string_view path) const override;
  void DeleteFile(std::string_view path) override;
  /// Replaces `to` whole; copying a file onto itself leaves it.
  void CopyFile(std::string_view from, std::string_view to) override;
  void RenameFile(std::string_view from, std::string_view to) override;
  [[nodiscard]] std::vector<std::string> ListFiles(std::string_view pattern) const override;
  [[nodiscard]] std::vector<FileEntry> ListEntries(std::string_view pattern) const override;
  [[nodiscard]] std::vector<std::string> ListDirectories(std::string_view path) const override;
  [[nodiscard]] std::unique_ptr<RecordFile> OpenRecords(std::string_view path,
                                                        std::size_t recordSize) const override;

  /// The lock on that file (see FileLock); nothing when somebody else holds it. RuntimeFault where
  /// the file cannot be made.
  [[nodiscard]] std::optional<FileLock> LockFile(std::string_view path) const;

  /// Takes away what killed programs left half written in a directory. Quiet about a directory that
  /// is missing and about files that may not go.
  void RemoveLeftovers(std::string_view directory) const;

 private:
  /// The native path, or a fault where no path can be meant.
  [[nodiscard]] std::string Native(std::string_view path) const;

  NativePaths paths_;
};

}  // namespace torvane::platform
