// The generator of large part programs, for tests and benchmarks.
#pragma once

#include "tools/ProgramGenerator.h"

namespace torvane::tests {

using tools::GenerateProgram;
using tools::GeneratorOptions;

}  // namespace torvane::tests
