// The files of an installation for a program that only looks: reads go through, writes go nowhere.
#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "platform/FileSystem.h"

namespace torvane::tools {

/// Reading an installation as the console does would write its notes and its Control.cfg afresh;
/// a check beside a running machine must leave all of that alone.
class ReadOnlyFiles final : public platform::FileSystem {
 public:
  /// `files` must outlive it.
  explicit ReadOnlyFiles(const platform::FileSystem& files) : files_(files) {}

  [[nodiscard]] bool FileExists(std::string_view path) const override {
    return files_.FileExists(path);
  }
  [[nodiscard]] bool DirectoryExists(std::string_view path) const override {
    return files_.DirectoryExists(path);
  }
  [[nodiscard]] std::string ReadFile(std::string_view path) const override {
    return files_.ReadFile(path);
  }
  [[nodiscard]] std::uint64_t FileSize(std::string_view path) const override {
    return files_.FileSize(path);
  }
  [[nodiscard]] std::vector<std::string> ListFiles(std::string_view pattern) const override {
    return files_.ListFiles(pattern);
  }
  [[nodiscard]] std::vector<std::string> ListDirectories(std::string_view path) const override {
    return files_.ListDirectories(path);
  }
  [[nodiscard]] std::unique_ptr<platform::RecordFile> OpenRecords(
      std::string_view path, std::size_t recordSize) const override {
    return files_.OpenRecords(path, recordSize);
  }

  void MakeDirectory(std::string_view) override {}
  void RemoveDirectory(std::string_view) override {}
  void ReplaceFile(std::string_view, std::string_view) override {}
  void OverwriteFile(std::string_view, std::string_view) override {}
  void AppendFile(std::string_view, std::string_view) override {}
  void DeleteFile(std::string_view) override {}
  void CopyFile(std::string_view, std::string_view) override {}
  void RenameFile(std::string_view, std::string_view) override {}

 private:
  const platform::FileSystem& files_;
};

}  // namespace torvane::tools
