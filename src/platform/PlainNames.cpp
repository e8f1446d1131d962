#include "platform/PlainNames.h"

#include <algorithm>

namespace torvane::platform {

bool IsPlainName(std::string_view name) {
  const bool forbidden = std::any_of(name.begin(), name.end(), [](char c) {
    return static_cast<unsigned char>(c) < 32 ||
           std::string_view("\\/:*?").find(c) != std::string_view::npos;
  });
  return !forbidden && name.find_first_not_of(". ") != std::string_view::npos;
}

}  // namespace torvane::platform
