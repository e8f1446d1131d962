// Files in memory for fuzz targets that write.
#pragma once

#include <map>
#include <string>

#include "platform/FileSystem.h"
#include "platform/RuntimeFault.h"

namespace torvane::fuzz {

/// Every directory is there; records and listings are nothing.
class FuzzFiles final : public platform::FileSystem {
 public:
  std::map<std::string, std::string> Files;

  bool FileExists(std::string_view path) const override {
    return Files.count(std::string(path)) != 0;
  }
  bool DirectoryExists(std::string_view) const override { return true; }
  void MakeDirectory(std::string_view) override {}
  void RemoveDirectory(std::string_view) override {}
  std::string ReadFile(std::string_view path) const override {
    const auto found = Files.find(std::string(path));
    if (found == Files.end()) throw platform::RuntimeFault(std::string(path), "not found");
    return found->second;
  }
  void ReplaceFile(std::string_view path, std::string_view bytes) override {
    Files[std::string(path)] = bytes;
  }
  void OverwriteFile(std::string_view path, std::string_view bytes) override {
    Files[std::string(path)] = bytes;
  }
  void AppendFile(std::string_view path, std::string_view bytes) override {
    Files[std::string(path)] += bytes;
  }
  std::uint64_t FileSize(std::string_view path) const override { return ReadFile(path).size(); }
  void DeleteFile(std::string_view path) override { Files.erase(std::string(path)); }
  void CopyFile(std::string_view from, std::string_view to) override {
    Files[std::string(to)] = ReadFile(from);
  }
  void RenameFile(std::string_view from, std::string_view to) override {
    CopyFile(from, to);
    DeleteFile(from);
  }
  std::vector<std::string> ListFiles(std::string_view) const override { return {}; }
  std::vector<std::string> ListDirectories(std::string_view) const override { return {}; }
  std::unique_ptr<platform::RecordFile> OpenRecords(std::string_view path,
                                                    std::size_t) const override {
    throw platform::RuntimeFault(std::string(path), "not found");
  }
};

}  // namespace torvane::fuzz
