// The status word of the controller, taken apart.
#pragma once

#include <cstdint>

#include "core/MachineState.h"

namespace torvane::supervision {

/// Stores `word` (VR(19)) and its bits. The running state and the beam of the tick before are kept
/// beside them. Without a variant above 0 the machine has no beam, and both flags stay false.
void DecodeStatus(core::MachineState& state, std::int32_t word, std::int16_t machineVariant);

/// True when the run of one tick before has just ended.
[[nodiscard]] inline bool RunEnded(const core::MachineState& state) {
  return state.MachineWasRunning && !state.MachineRunning;
}

}  // namespace torvane::supervision
