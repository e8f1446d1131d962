// Removable drives by letter.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace torvane::platform {

class Drives {
 public:
  virtual ~Drives() = default;

  /// Names such as "A:" of the drives that are in the machine now.
  [[nodiscard]] virtual std::vector<std::string> List() const = 0;

  /// True when the drive answers, with a medium in it.
  [[nodiscard]] virtual bool Ready(std::string_view drive) const = 0;
};

}  // namespace torvane::platform
