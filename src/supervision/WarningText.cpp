#include "supervision/WarningText.h"

namespace torvane::supervision {

std::string OneLineWarning(std::string_view line) { return "\n\n" + std::string(line); }

std::string TwoLineWarning(std::string_view first, std::string_view second) {
  return "\n" + std::string(first) + "\n" + std::string(second);
}

}  // namespace torvane::supervision
