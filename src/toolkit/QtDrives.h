// Removable volumes as drives with letters.
#pragma once

#include <map>
#include <string>

#include "platform/Drives.h"

namespace torvane::toolkit {

/// Drives given by name (letter to path), and the removable volumes that are mounted now, with the
/// letters from E on that are free. A volume keeps its letter while the program runs.
class QtDrives final : public platform::Drives {
 public:
  explicit QtDrives(const std::map<char, std::string>& given = {});

  [[nodiscard]] std::vector<std::string> List() const override;
  [[nodiscard]] bool Ready(std::string_view drive) const override;

  /// Where a drive ("E:" or "E") is mounted in the machine's own form; empty when it is not known.
  [[nodiscard]] std::string PathOf(std::string_view drive) const;

 private:
  void Look() const;

  std::map<char, std::string> given_;
  mutable std::map<char, std::string> found_;
};

}  // namespace torvane::toolkit
