#include "console/Pads.h"

#include <utility>

#include "core/General.h"
#include "core/ScreenNames.h"

namespace torvane::console {

PadEntry Pads::Enter(const char* screen, std::string_view initialText, int mode) {
  // Of this call alone: another pad may come up before it has gone on.
  const auto entry = std::make_shared<PadEntry>();
  entry->EntryText = std::string(core::Trim(initialText));
  entry->EntryResult = mode;
  entry_ = entry;
  screens_.ShowModal(screen);
  return std::move(*entry);
}

double Pads::EnterNumber(std::string_view initialText, int mode) {
  return core::LeadingNumber(Enter(core::ScreenNames::NumberForm, initialText, mode).EntryText);
}

std::string Pads::EnterText(std::string_view initialText, int mode) {
  return Enter(core::ScreenNames::KeyboardForm, initialText, mode).EntryText;
}

std::optional<std::string> Pads::AskText(std::string_view initialText, int mode) {
  constexpr int Accepted = -1;
  PadEntry entry = Enter(core::ScreenNames::KeyboardForm, initialText, mode);
  if (entry.EntryResult != Accepted) return std::nullopt;
  return std::move(entry.EntryText);
}

}  // namespace torvane::console
