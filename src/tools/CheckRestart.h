// Restarts rehearsed on paper, as a command.
#pragma once

#include <string>

#include "core/LinkSettings.h"
#include "platform/Clock.h"
#include "restart/Rehearsal.h"
#include "tools/CheckCommand.h"
#include "tools/CheckOptions.h"
#include "tools/CheckProgram.h"

namespace torvane::tools {

/// Rehearses what `options.Restart` asks for and prints it. Reads only. Gives an ExitStatus. Throws
/// WrongUse and RuntimeFault.
[[nodiscard]] int RunRestartCheck(const Installation& installation, const CheckOptions& options,
                                  const platform::Clock& clock, CheckStreams streams);

/// One rehearsal in plain sentences.
[[nodiscard]] std::string RehearsalText(const restart::Rehearsal& rehearsal,
                                        const partprogram::DrawRecord* firstCut);

}  // namespace torvane::tools
