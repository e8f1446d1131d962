#include "link/OperatorDialogs.h"

namespace torvane::link {

void OperatorDialogs::Warn(std::string_view line) {
  ShowWarning(OneLineWarning(line), WarningMode::Ok, WarningStyle::Warning);
}

void OperatorDialogs::Warn(std::string_view first, std::string_view second) {
  ShowWarning(TwoLineWarning(first, second), WarningMode::Ok, WarningStyle::Warning);
}

bool OperatorDialogs::Confirm(std::string_view line) {
  return ShowWarning(OneLineWarning(line), WarningMode::OkCancel, WarningStyle::Warning);
}

bool OperatorDialogs::Confirm(std::string_view first, std::string_view second) {
  return ShowWarning(TwoLineWarning(first, second), WarningMode::OkCancel, WarningStyle::Warning);
}

std::string OneLineWarning(std::string_view line) {
  std::string text = "\n\n";
  return text.append(line);
}

std::string TwoLineWarning(std::string_view first, std::string_view second) {
  std::string text = "\n";
  return text.append(first).append("\n").append(second);
}

}  // namespace torvane::link
