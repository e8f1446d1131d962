#include "supervision/MessageButton.h"

#include "core/MachineState.h"

namespace torvane::supervision {

ButtonColours MessageButtonColours(std::int32_t statusWord, bool newProgramsReceived) {
  using core::ColourName;
  if ((statusWord & core::StatusBit::Feedhold) != 0) {
    return {ColourName::CriticalMessageButton, ColourName::CriticalMessageButtonText};
  }
  if ((statusWord & core::StatusBit::InError) != 0 || newProgramsReceived) {
    return {ColourName::WarningMessageButton, ColourName::WarningMessageButtonText};
  }
  return {ColourName::OkMessageButton, ColourName::OkMessageButtonText};
}

}  // namespace torvane::supervision
