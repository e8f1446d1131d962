#include "console/Pads.h"

#include "console/KeyboardForm.h"
#include "console/NumberForm.h"
#include "core/General.h"

namespace torvane::console {

Pads::Pads(ScreenSet& screens) : screens_(screens) {
  screens_.Register(NumberForm::ScreenName,
                    [this](ScreenSet& set) { return std::make_unique<NumberForm>(set, entry_); });
  screens_.Register(KeyboardForm::ScreenName,
                    [this](ScreenSet& set) { return std::make_unique<KeyboardForm>(set, entry_); });
}

std::string Pads::Enter(const char* screen, std::string_view initialText, int mode) {
  entry_.EntryText = std::string(core::Trim(initialText));
  entry_.EntryResult = mode;
  screens_.ShowModal(screen);
  std::string text = std::move(entry_.EntryText);
  entry_ = {};
  return text;
}

double Pads::EnterNumber(std::string_view initialText, int mode) {
  return core::LeadingNumber(Enter(NumberForm::ScreenName, initialText, mode));
}

std::string Pads::EnterText(std::string_view initialText, int mode) {
  return Enter(KeyboardForm::ScreenName, initialText, mode);
}

}  // namespace torvane::console
