#include "console/Pads.h"

#include "core/General.h"
#include "core/ScreenNames.h"

namespace torvane::console {

std::string Pads::Enter(const char* screen, std::string_view initialText, int mode) {
  // Of this call alone: another pad may come up before it has gone on.
  const auto entry = std::make_shared<PadEntry>();
  entry->EntryText = std::string(core::Trim(initialText));
  entry->EntryResult = mode;
  entry_ = entry;
  screens_.ShowModal(screen);
  return entry->EntryText;
}

double Pads::EnterNumber(std::string_view initialText, int mode) {
  return core::LeadingNumber(Enter(core::ScreenNames::NumberForm, initialText, mode));
}

std::string Pads::EnterText(std::string_view initialText, int mode) {
  return Enter(core::ScreenNames::KeyboardForm, initialText, mode);
}

}  // namespace torvane::console
