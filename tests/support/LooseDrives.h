// Removable drives as a test wants them.
#pragma once

#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "platform/Drives.h"

namespace torvane::tests {

/// Drives that answer, or do so only from a later test on.
class LooseDrives final : public platform::Drives {
 public:
  std::vector<std::string> Present;
  std::map<std::string, int> ReadyAt;  ///< the test from which on a drive answers, 1 is the first
  mutable std::map<std::string, int> Tests;

  [[nodiscard]] std::vector<std::string> List() const override { return Present; }
  [[nodiscard]] bool Ready(std::string_view drive) const override {
    const std::string name(drive);
    const auto row = ReadyAt.find(name);
    return row != ReadyAt.end() && ++Tests[name] >= row->second;
  }
};

}  // namespace torvane::tests
