#include "supervision/MessageButton.h"

#include "core/MachineState.h"

namespace torvane::supervision {

MessageState MessageStateOf(std::int32_t statusWord, bool newProgramsReceived) {
  if ((statusWord & core::StatusBit::Feedhold) != 0) return MessageState::Critical;
  const bool inError = (statusWord & core::StatusBit::InError) != 0;
  return inError || newProgramsReceived ? MessageState::Warning : MessageState::Good;
}

ButtonColours MessageButtonColours(MessageState state) {
  using core::ColourName;
  switch (state) {
    case MessageState::Critical:
      return {ColourName::CriticalMessageButton, ColourName::CriticalMessageButtonText};
    case MessageState::Warning:
      return {ColourName::WarningMessageButton, ColourName::WarningMessageButtonText};
    case MessageState::Good:
      break;
  }
  return {ColourName::OkMessageButton, ColourName::OkMessageButtonText};
}

}  // namespace torvane::supervision
