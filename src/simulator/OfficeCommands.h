// The office in words: what a person types to work it.
#pragma once

#include <string_view>

#include "platform/FileSystem.h"
#include "simulator/OfficePeer.h"
#include "simulator/OperatorCommands.h"

namespace torvane::simulator {

/// Carries out one line; see OfficeHelp for the words. A file is named by its path in `files`, and
/// one that cannot be read is reported in the answer. Anything unknown changes nothing.
[[nodiscard]] OperatorAnswer CarryOutOfficeCommand(std::string_view line, OfficePeer& office,
                                                   const platform::FileSystem& files);

/// Every word with what it does, a line each.
[[nodiscard]] std::string OfficeHelp();

}  // namespace torvane::simulator
