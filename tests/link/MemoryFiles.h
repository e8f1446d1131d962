// A file system in memory for the link's tests: what stands where, and what was touched.
#pragma once

#include <algorithm>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "platform/FileSystem.h"
#include "platform/RuntimeFault.h"

namespace torvane::link {

class MemoryFiles final : public platform::FileSystem {
 public:
  std::map<std::string, std::string, std::less<>> Files;
  std::map<std::string, std::uint64_t, std::less<>> PretendedSizes;  ///< instead of the true one
  std::string ReadOnlyPath;                                          ///< appending to it is a fault
  int Opens = 0;

  [[nodiscard]] std::string Text(std::string_view path) const {
    const auto found = Files.find(path);
    return found == Files.end() ? "(no file)" : found->second;
  }

  [[nodiscard]] bool FileExists(std::string_view path) const override {
    return Files.find(path) != Files.end();
  }
  [[nodiscard]] bool DirectoryExists(std::string_view) const override { return true; }
  void MakeDirectory(std::string_view) override {}
  void RemoveDirectory(std::string_view) override {}
  [[nodiscard]] std::string ReadFile(std::string_view path) const override { return Find(path); }
  void ReplaceFile(std::string_view path, std::string_view bytes) override { Put(path, bytes); }
  void OverwriteFile(std::string_view path, std::string_view bytes) override { Put(path, bytes); }
  void AppendFile(std::string_view path, std::string_view bytes) override {
    if (path == ReadOnlyPath) throw platform::RuntimeFault(std::string(path), "cannot be written");
    ++Opens;
    Files[std::string(path)] += bytes;
  }
  [[nodiscard]] std::uint64_t FileSize(std::string_view path) const override {
    const auto pretended = PretendedSizes.find(path);
    return pretended != PretendedSizes.end() ? pretended->second : Find(path).size();
  }
  void DeleteFile(std::string_view path) override { Files.erase(std::string(path)); }
  void CopyFile(std::string_view from, std::string_view to) override { Put(to, Find(from)); }
  void RenameFile(std::string_view from, std::string_view to) override {
    Put(to, Find(from));
    DeleteFile(from);
  }
  [[nodiscard]] std::vector<std::string> ListFiles(std::string_view) const override { return {}; }
  [[nodiscard]] std::vector<std::string> ListDirectories(std::string_view) const override {
    return {};
  }
  [[nodiscard]] std::unique_ptr<platform::RecordFile> OpenRecords(
      std::string_view path, std::size_t recordSize) const override {
    return std::make_unique<Records>(Find(path), recordSize);
  }

 private:
  class Records final : public platform::RecordFile {
   public:
    Records(std::string bytes, std::size_t size) : bytes_(std::move(bytes)), size_(size) {}
    bool Read(std::uint32_t number, std::span<char> bytes) override {
      if (number < 1 || number * size_ > bytes_.size()) return false;
      std::copy_n(bytes_.begin() + static_cast<std::ptrdiff_t>((number - 1) * size_), size_,
                  bytes.begin());
      return true;
    }

   private:
    std::string bytes_;
    std::size_t size_;
  };

  [[nodiscard]] const std::string& Find(std::string_view path) const {
    const auto found = Files.find(path);
    if (found == Files.end()) throw platform::RuntimeFault(std::string(path), "is not there");
    return found->second;
  }
  void Put(std::string_view path, std::string_view bytes) {
    Files[std::string(path)] = std::string(bytes);
  }
};

}  // namespace torvane::link
