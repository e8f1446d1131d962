// Faults of disks and drives, on demand: full, write-protected, gone, and ready at the second try.
#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/Drives.h"
#include "platform/FileSystem.h"

namespace torvane::simulator {

/// What is wrong with the storage now. A path counts where it begins with `Prefix`, whatever its
/// case; an empty prefix counts for all.
class StorageFaults {
 public:
  /// So many bytes can still be written; what goes beyond is a fault.
  void FullAfter(std::uint64_t bytes, std::string_view prefix = "");
  void ReadOnly(std::string_view prefix = "");
  /// Nothing can be read or written, and nothing is found.
  void Gone(std::string_view prefix = "");
  /// Drive "A:" answers only from the test number `tests` on.
  void ReadyAt(std::string_view drive, int tests);
  void Clear();

  /// Throws RuntimeFault where `bytes` cannot be written to `path`; otherwise they count as
  /// written.
  void Write(std::string_view path, std::uint64_t bytes);
  /// Bytes that can still be written to `path`.
  [[nodiscard]] std::uint64_t Room(std::string_view path) const;
  [[nodiscard]] bool IsGone(std::string_view path) const;
  /// Counts a test of a drive. False while it does not answer yet.
  [[nodiscard]] bool TestDrive(std::string_view drive);

 private:
  struct Limit {
    std::string Prefix;
    std::uint64_t Bytes = 0;
  };
  std::vector<Limit> full_;
  std::vector<std::string> readOnly_;
  std::vector<std::string> gone_;
  std::map<std::string, int> testsLeft_;  ///< by drive, upper case
};

/// Files with the faults of `faults`, which must outlive them. Without a fault everything is passed
/// on.
class FaultyFiles final : public platform::FileSystem {
 public:
  FaultyFiles(platform::FileSystem& inner, StorageFaults& faults)
      : inner_(inner), faults_(faults) {}

  [[nodiscard]] bool FileExists(std::string_view path) const override;
  [[nodiscard]] bool DirectoryExists(std::string_view path) const override;
  void MakeDirectory(std::string_view path) override;
  void RemoveDirectory(std::string_view path) override;
  [[nodiscard]] std::string ReadFile(std::string_view path) const override;
  void ReplaceFile(std::string_view path, std::string_view bytes) override;
  void OverwriteFile(std::string_view path, std::string_view bytes) override;
  /// On a full disk what still fits is written, as disks do.
  void AppendFile(std::string_view path, std::string_view bytes) override;
  [[nodiscard]] std::uint64_t FileSize(std::string_view path) const override;
  void DeleteFile(std::string_view path) override;
  void CopyFile(std::string_view from, std::string_view to) override;
  void RenameFile(std::string_view from, std::string_view to) override;
  [[nodiscard]] std::vector<std::string> ListFiles(std::string_view pattern) const override;
  [[nodiscard]] std::vector<platform::FileEntry> ListEntries(
      std::string_view pattern) const override;
  [[nodiscard]] std::vector<std::string> ListDirectories(std::string_view path) const override;
  [[nodiscard]] std::unique_ptr<platform::RecordFile> OpenRecords(
      std::string_view path, std::size_t recordSize) const override;

 private:
  void RefuseGone(std::string_view path) const;

  platform::FileSystem& inner_;
  StorageFaults& faults_;
};

/// Drives with the faults of `faults`.
class FaultyDrives final : public platform::Drives {
 public:
  FaultyDrives(const platform::Drives& inner, StorageFaults& faults)
      : inner_(inner), faults_(faults) {}

  [[nodiscard]] std::vector<std::string> List() const override { return inner_.List(); }
  [[nodiscard]] bool Ready(std::string_view drive) const override {
    const bool answers = faults_.TestDrive(drive);
    return answers && !faults_.IsGone(drive) && inner_.Ready(drive);
  }

 private:
  const platform::Drives& inner_;
  StorageFaults& faults_;
};

}  // namespace torvane::simulator
