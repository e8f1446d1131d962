// What the handling of files says to the operator and asks of him, and what happens to a fault.
#pragma once

#include <functional>
#include <string_view>

#include "files/FileParts.h"

namespace torvane::files {

/// One line in the middle of the warning dialog, to be acknowledged.
void Tell(const FileParts& parts, std::string_view line);

/// A text with its line feeds, answered with &OK (true) or &CANCEL.
[[nodiscard]] bool Ask(const FileParts& parts, std::string_view text);

/// How a file action ended for the screen that asked for it.
enum class Ending {
  Closes,    ///< carried out, or answered with no
  StaysOpen  ///< refused
};

/// What a fault of the disk comes to.
enum class FaultRule {
  EndsTheProgram,  ///< unless the machine is in a cycle: then it is a warning
  IsAWarning
};

/// True while the machine runs, is in a cycle or is held.
[[nodiscard]] bool InCycle(const core::MachineState& state);

/// Runs `action`. A fault that does not end the program is noted in Errors.txt and shown to the
/// operator, and the screen closes, so that no list shows what is not there any more.
[[nodiscard]] Ending CarryOut(const FileParts& parts, FaultRule rule,
                              const std::function<Ending()>& action);

}  // namespace torvane::files
