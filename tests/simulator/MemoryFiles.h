// Files in memory, as far as the machine reads any.
#pragma once

#include <algorithm>
#include <map>
#include <memory>
#include <span>
#include <string>
#include <vector>

#include "partprogram/DrawRecord.h"
#include "platform/FileSystem.h"
#include "platform/RuntimeFault.h"

namespace torvane::simulator {

class MemoryFiles final : public platform::FileSystem {
 public:
  void Put(const std::string& path, std::string bytes) { files_[path] = std::move(bytes); }

  [[nodiscard]] bool FileExists(std::string_view path) const override {
    return files_.count(std::string(path)) != 0;
  }
  [[nodiscard]] std::string ReadFile(std::string_view path) const override { return At(path); }
  [[nodiscard]] std::uint64_t FileSize(std::string_view path) const override {
    return At(path).size();
  }
  [[nodiscard]] std::unique_ptr<platform::RecordFile> OpenRecords(
      std::string_view path, std::size_t recordSize) const override {
    return std::make_unique<Records>(At(path), recordSize);
  }

  [[nodiscard]] bool DirectoryExists(std::string_view) const override { return false; }
  void MakeDirectory(std::string_view path) override { Refuse(path); }
  void RemoveDirectory(std::string_view path) override { Refuse(path); }
  void ReplaceFile(std::string_view path, std::string_view) override { Refuse(path); }
  void OverwriteFile(std::string_view path, std::string_view) override { Refuse(path); }
  void AppendFile(std::string_view path, std::string_view) override { Refuse(path); }
  void DeleteFile(std::string_view path) override { Refuse(path); }
  void CopyFile(std::string_view from, std::string_view) override { Refuse(from); }
  void RenameFile(std::string_view from, std::string_view) override { Refuse(from); }
  [[nodiscard]] std::vector<std::string> ListFiles(std::string_view) const override { return {}; }
  [[nodiscard]] std::vector<std::string> ListDirectories(std::string_view) const override {
    return {};
  }

 private:
  class Records final : public platform::RecordFile {
   public:
    Records(std::string bytes, std::size_t size) : bytes_(std::move(bytes)), size_(size) {}
    bool Read(std::uint32_t number, std::span<char> bytes) override {
      if (number == 0 || number * size_ > bytes_.size()) return false;
      std::copy_n(bytes_.begin() + static_cast<std::ptrdiff_t>((number - 1) * size_), size_,
                  bytes.begin());
      return true;
    }

   private:
    std::string bytes_;
    std::size_t size_;
  };

  [[noreturn]] static void Refuse(std::string_view path) {
    throw platform::RuntimeFault(std::string(path), "the machine must not write");
  }
  const std::string& At(std::string_view path) const {
    const auto found = files_.find(std::string(path));
    if (found == files_.end()) throw platform::RuntimeFault(std::string(path), "missing");
    return found->second;
  }

  std::map<std::string, std::string> files_;
};

/// A record file of these records.
inline std::string EncodeAll(const std::vector<partprogram::DrawRecord>& records) {
  std::string bytes(records.size() * partprogram::DrawRecordSize, '\0');
  for (std::size_t i = 0; i < records.size(); ++i) {
    partprogram::EncodeRecord(records[i], std::span<char, partprogram::DrawRecordSize>(
                                              bytes.data() + i * partprogram::DrawRecordSize,
                                              partprogram::DrawRecordSize));
  }
  return bytes;
}

}  // namespace torvane::simulator
