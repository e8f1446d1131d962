// Files that write down in one list what was done with them, for tests of an order.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "platform/FileSystem.h"

namespace torvane::tests {

/// Passes everything on. Tests of existence and listings are not written down; a note in
/// LastFile.txt is written as "note <path>".
class RecordingFiles final : public platform::FileSystem {
 public:
  RecordingFiles(platform::FileSystem& inner, std::vector<std::string>& events)
      : inner_(inner), events_(events) {}

  /// Called with each event before it is passed on; what it throws is the disk's fault.
  std::function<void(const std::string& event)> Before;

  bool FileExists(std::string_view path) const override { return inner_.FileExists(path); }
  bool DirectoryExists(std::string_view path) const override {
    return inner_.DirectoryExists(path);
  }
  void MakeDirectory(std::string_view path) override {
    Note("make", path);
    inner_.MakeDirectory(path);
  }
  void RemoveDirectory(std::string_view path) override {
    Note("remove", path);
    inner_.RemoveDirectory(path);
  }
  std::string ReadFile(std::string_view path) const override {
    Note("read", path);
    return inner_.ReadFile(path);
  }
  void ReplaceFile(std::string_view path, std::string_view bytes) override {
    Note("replace", path);
    inner_.ReplaceFile(path, bytes);
  }
  void OverwriteFile(std::string_view path, std::string_view bytes) override {
    if (path.ends_with("LastFile.txt")) {
      Note("note", bytes.substr(0, bytes.find('\r')));
    } else {
      Note("overwrite", path);
    }
    inner_.OverwriteFile(path, bytes);
  }
  void AppendFile(std::string_view path, std::string_view bytes) override {
    Note("append", path);
    inner_.AppendFile(path, bytes);
  }
  std::uint64_t FileSize(std::string_view path) const override { return inner_.FileSize(path); }
  void DeleteFile(std::string_view path) override {
    Note("delete", path);
    inner_.DeleteFile(path);
  }
  void CopyFile(std::string_view from, std::string_view to) override {
    Note("copy", std::string(from) + " " + std::string(to));
    inner_.CopyFile(from, to);
  }
  void RenameFile(std::string_view from, std::string_view to) override {
    Note("rename", std::string(from) + " " + std::string(to));
    inner_.RenameFile(from, to);
  }
  std::vector<std::string> ListFiles(std::string_view pattern) const override {
    return inner_.ListFiles(pattern);
  }
  std::vector<std::string> ListDirectories(std::string_view path) const override {
    return inner_.ListDirectories(path);
  }
  std::unique_ptr<platform::RecordFile> OpenRecords(std::string_view path,
                                                    std::size_t recordSize) const override {
    Note("records", path);
    return inner_.OpenRecords(path, recordSize);
  }

 private:
  void Note(std::string_view what, std::string_view path) const {
    events_.push_back(std::string(what) + " " + std::string(path));
    if (Before) Before(events_.back());
  }

  platform::FileSystem& inner_;
  std::vector<std::string>& events_;
};

}  // namespace torvane::tests
