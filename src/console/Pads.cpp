#include "console/Pads.h"

#include "core/General.h"
#include "core/ScreenNames.h"

namespace torvane::console {

std::string Pads::Enter(const char* screen, std::string_view initialText, int mode) {
  entry_.EntryText = std::string(core::Trim(initialText));
  entry_.EntryResult = mode;
  screens_.ShowModal(screen);
  std::string text = std::move(entry_.EntryText);
  entry_ = {};
  return text;
}

double Pads::EnterNumber(std::string_view initialText, int mode) {
  return core::LeadingNumber(Enter(core::ScreenNames::NumberForm, initialText, mode));
}

std::string Pads::EnterText(std::string_view initialText, int mode) {
  return Enter(core::ScreenNames::KeyboardForm, initialText, mode);
}

}  // namespace torvane::console
