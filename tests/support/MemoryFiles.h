// Files in memory for tests: what stands where, and what was asked of them.
#pragma once

#include <algorithm>
#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "platform/FileSystem.h"
#include "platform/RuntimeFault.h"

namespace torvane::tests {

/// Paths are compared as they are written; every directory is there.
class MemoryFiles : public platform::FileSystem {
 public:
  std::map<std::string, std::string, std::less<>> Files;
  std::map<std::string, std::uint64_t, std::less<>> PretendedSizes;  ///< instead of the true one
  std::string ReadOnlyPath;                                          ///< appending to it is a fault
  bool ReadOnly = false;                                             ///< writing anything is one
  int Opens = 0;                         ///< of files that were appended to
  mutable std::vector<std::string> Log;  ///< "open NAME", "write NAME" and "read N" of records

  void Put(std::string_view path, std::string_view bytes) {
    Files[std::string(path)] = std::string(bytes);
  }
  [[nodiscard]] std::string Text(std::string_view path) const {
    const auto found = Files.find(path);
    return found == Files.end() ? "(no file)" : found->second;
  }
  /// How often the records of a file were opened.
  [[nodiscard]] int Opened(std::string_view path) const {
    return static_cast<int>(std::count(Log.begin(), Log.end(), "open " + std::string(path)));
  }

  [[nodiscard]] bool FileExists(std::string_view path) const override {
    return Files.find(path) != Files.end();
  }
  [[nodiscard]] bool DirectoryExists(std::string_view) const override { return true; }
  void MakeDirectory(std::string_view path) override { Admit(path); }
  void RemoveDirectory(std::string_view path) override { Admit(path); }
  [[nodiscard]] std::string ReadFile(std::string_view path) const override { return Find(path); }
  void ReplaceFile(std::string_view path, std::string_view bytes) override { Write(path, bytes); }
  void OverwriteFile(std::string_view path, std::string_view bytes) override { Write(path, bytes); }
  void AppendFile(std::string_view path, std::string_view bytes) override {
    if (path == ReadOnlyPath) throw platform::RuntimeFault(std::string(path), "cannot be written");
    Admit(path);
    ++Opens;
    Log.push_back("write " + std::string(path));
    Files[std::string(path)] += bytes;
  }
  [[nodiscard]] std::uint64_t FileSize(std::string_view path) const override {
    const auto pretended = PretendedSizes.find(path);
    return pretended != PretendedSizes.end() ? pretended->second : Find(path).size();
  }
  void DeleteFile(std::string_view path) override {
    Admit(path);
    Files.erase(std::string(path));
  }
  void CopyFile(std::string_view from, std::string_view to) override {
    Write(to, std::string(Find(from)));
  }
  void RenameFile(std::string_view from, std::string_view to) override {
    CopyFile(from, to);
    DeleteFile(from);
  }
  [[nodiscard]] std::vector<std::string> ListFiles(std::string_view) const override { return {}; }
  [[nodiscard]] std::vector<std::string> ListDirectories(std::string_view) const override {
    return {};
  }
  [[nodiscard]] std::unique_ptr<platform::RecordFile> OpenRecords(
      std::string_view path, std::size_t recordSize) const override {
    Log.push_back("open " + std::string(path));
    return std::make_unique<Records>(*this, Find(path), recordSize);
  }

 private:
  class Records final : public platform::RecordFile {
   public:
    Records(const MemoryFiles& owner, std::string bytes, std::size_t size)
        : owner_(owner), bytes_(std::move(bytes)), size_(size) {}
    bool Read(std::uint32_t number, std::span<char> bytes) override {
      owner_.Log.push_back("read " + std::to_string(number));
      if (number < 1 || number * size_ > bytes_.size()) return false;
      bytes_.copy(bytes.data(), size_, (number - 1) * size_);
      return true;
    }

   private:
    const MemoryFiles& owner_;
    std::string bytes_;
    std::size_t size_;
  };

  [[nodiscard]] const std::string& Find(std::string_view path) const {
    const auto found = Files.find(path);
    if (found == Files.end()) throw platform::RuntimeFault(std::string(path), "not found");
    return found->second;
  }
  void Admit(std::string_view path) const {
    if (ReadOnly) throw platform::RuntimeFault(std::string(path), "must not be written");
  }
  void Write(std::string_view path, std::string_view bytes) {
    Admit(path);
    Log.push_back("write " + std::string(path));
    Put(path, bytes);
  }
};

}  // namespace torvane::tests
