// Makes the cleaned texts of a program that the other passes read.
#pragma once

#include <string>
#include <string_view>

#include "core/MachineData.h"

namespace torvane::partprogram {

/// Each line trimmed, empty lines left out, CR LF after each. Line numbers of records refer to
/// this text.
[[nodiscard]] std::string SqueezeProgram(std::string_view program);

/// What the cleaning step leaves: ".bdy" and ".cnv", lines ended by CR LF.
struct IntermediateText {
  std::string Body;
  std::string Converted;
};

/// `program` is the squeezed ".prg".
[[nodiscard]] IntermediateText MakeIntermediateFiles(std::string_view program,
                                                     const core::MachineData& machine);

}  // namespace torvane::partprogram
