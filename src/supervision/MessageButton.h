// The colours of the button that leads to the messages: while the list is closed they alone tell
// the operator that a message is in force.
#pragma once

#include <cstdint>

#include "core/ColourTable.h"

namespace torvane::supervision {

struct ButtonColours {
  core::ColourName Background;
  core::ColourName Text;
};

/// How serious the messages in force are.
enum class MessageState { Good, Warning, Critical };

/// From the status word and from whether received programs wait. A feed hold is critical whatever
/// is in force beside it; an error and received programs are warnings.
[[nodiscard]] MessageState MessageStateOf(std::int32_t statusWord, bool newProgramsReceived);

[[nodiscard]] ButtonColours MessageButtonColours(MessageState state);

}  // namespace torvane::supervision
