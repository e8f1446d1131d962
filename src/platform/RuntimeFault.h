// A required file that is missing, damaged or cannot be written.
#pragma once

#include <stdexcept>
#include <string>

namespace torvane::platform {

/// Thrown for a fault that ends the program unless a caller is told to catch it.
/// The sentence names the file first, then what was wrong with it.
class RuntimeFault : public std::runtime_error {
 public:
  RuntimeFault(std::string path, const std::string& what)
      : std::runtime_error(path.empty() ? what : path + ": " + what), path_(std::move(path)) {}

  /// The file in the system's own form, empty where no file is to blame.
  [[nodiscard]] const std::string& Path() const { return path_; }

 private:
  std::string path_;
};

}  // namespace torvane::platform
