// A directory of its own for a test, gone when the test ends.
#pragma once

#include <filesystem>
#include <fstream>
#include <iterator>
#include <stdexcept>
#include <string>
#include <string_view>

#include <stdlib.h>

namespace torvane::tests {

class TempDirectory {
 public:
  TempDirectory() {
    std::string name = (std::filesystem::temp_directory_path() / "torvane-XXXXXX").string();
    if (mkdtemp(name.data()) == nullptr) throw std::runtime_error("no temporary directory");
    path_ = name;
  }
  ~TempDirectory() {
    std::error_code error;
    std::filesystem::remove_all(path_, error);
  }
  TempDirectory(const TempDirectory&) = delete;
  TempDirectory& operator=(const TempDirectory&) = delete;

  /// Native path, without a slash at its end.
  [[nodiscard]] std::string Path() const { return path_.string(); }

  /// Writes a file behind the file layer's back; `name` is native, directories are made.
  void Put(const std::string& name, std::string_view bytes) const {
    std::filesystem::create_directories((path_ / name).parent_path());
    std::ofstream out(path_ / name, std::ios::binary);
    out << bytes;
  }
  void MakeDirectory(const std::string& name) const {
    std::filesystem::create_directories(path_ / name);
  }

  /// Bytes of a file; a missing file gives "(missing)".
  [[nodiscard]] std::string Get(const std::string& name) const {
    std::ifstream in(path_ / name, std::ios::binary);
    if (!in) return "(missing)";
    return {std::istreambuf_iterator<char>(in), {}};
  }
  [[nodiscard]] bool Has(const std::string& name) const {
    return std::filesystem::exists(path_ / name);
  }

 private:
  std::filesystem::path path_;
};

}  // namespace torvane::tests
