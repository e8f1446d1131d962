#include "supervision/MachineStatus.h"

namespace torvane::supervision {

void DecodeStatus(core::MachineState& state, std::int32_t word, std::int16_t machineVariant) {
  namespace bit = core::StatusBit;
  const auto set = [word](std::int32_t mask) { return (word & mask) != 0; };
  state.StatusWord = word;
  state.MachineWasRunning = state.MachineRunning;
  state.MachineRunning = set(bit::Running);
  state.MachineFeedhold = set(bit::Feedhold);
  state.MachineCycleBit = set(bit::Cycle);
  state.MachineInError = static_cast<std::int16_t>(word & bit::InError);
  if (machineVariant <= 0) return;
  state.BeamWasOn = state.BeamOn;
  state.BeamOn = set(bit::Beam);
}

}  // namespace torvane::supervision
