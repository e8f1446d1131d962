// Open files of the machine: descriptors, whole reads and writes, and faults in plain words.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <string_view>

#include "platform/FileSystem.h"

namespace torvane::platform {

/// Throws RuntimeFault for the system path, with what `error` (an errno) means in plain words.
[[noreturn]] void ThrowFileFault(std::string_view path, int error);

/// A descriptor that closes itself. `path` is the system's, for faults; every member throws one.
class DiskFile {
 public:
  /// `flags` as for open(2). A directory is refused.
  DiskFile(std::string_view path, const std::string& native, int flags, unsigned mode = 0666);
  /// A new file for writing beside `target`, with a name that nobody else uses now.
  [[nodiscard]] static DiskFile Beside(std::string_view path, const std::string& target,
                                       std::string& name);
  ~DiskFile();
  DiskFile(const DiskFile&) = delete;
  DiskFile& operator=(const DiskFile&) = delete;

  /// Everything from the start.
  [[nodiscard]] std::string ReadAll() const;
  /// Up to `size` bytes from `offset`; fewer only at the end of the file.
  [[nodiscard]] std::size_t ReadAt(char* bytes, std::size_t size, std::uint64_t offset) const;
  void WriteAll(std::string_view bytes) const;
  /// Until the disk has it.
  void Flush() const;
  /// Closes, and tells of what only then comes out.
  void Close();

  [[nodiscard]] int Descriptor() const { return descriptor_; }

 private:
  DiskFile(std::string_view path, int descriptor) : path_(path), descriptor_(descriptor) {}

  std::string path_;
  int descriptor_ = -1;
};

/// How the name ends under which a file is written before it takes the place of the old one.
inline constexpr const char* BesideEnding = ".new~";

/// Whether a replaced file is on the disk when the call returns. Without it a power cut may leave
/// the old file or an empty one; a kill never does.
enum class Flushed { Yes, No };

/// A file written beside its place, and flushed. A link stays a link, and the file keeps its
/// permissions. Whatever `write` throws leaves the old file.
class FileBeside final : public NewFile {
 public:
  FileBeside(std::string_view path, const std::string& native,
             const std::function<void(const DiskFile&)>& write, Flushed flushed = Flushed::Yes);
  ~FileBeside() override;
  FileBeside(const FileBeside&) = delete;
  FileBeside& operator=(const FileBeside&) = delete;

  void PutInPlace() override;

 private:
  std::string path_;
  std::string target_;
  std::string beside_;  ///< empty once it is in place
  Flushed flushed_;
};

/// Written beside, flushed, renamed. A link stays a link, and the file keeps its permissions.
/// Whatever `write` throws leaves the old file.
void ReplaceWhole(std::string_view path, const std::string& native,
                  const std::function<void(const DiskFile&)>& write,
                  Flushed flushed = Flushed::Yes);
void ReplaceWhole(std::string_view path, const std::string& native, std::string_view bytes,
                  Flushed flushed = Flushed::Yes);

/// Takes away a file that a killed process left beside the one that it was writing. One that is
/// being written at this moment stays, and so does one that may not be deleted.
void RemoveLeftover(const std::string& native);

}  // namespace torvane::platform
