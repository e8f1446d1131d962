// What the poll knows of the machine. Written only by the poll.
#pragma once

#include <cstdint>

namespace torvane::core {

/// Bits of the status word VR(19).
namespace StatusBit {
inline constexpr std::int32_t Feedhold = 2048;
inline constexpr std::int32_t InError = 4096;
inline constexpr std::int32_t Cycle = 8192;
inline constexpr std::int32_t Running = 16384;
inline constexpr std::int32_t RestartReady = 32768;
inline constexpr std::int32_t RollersOn = 131072;
inline constexpr std::int32_t Beam = 2097152;
}  // namespace StatusBit

/// Positions mm, feeds mm per minute or percent, times s.
struct MachineState {
  std::int32_t StatusWord = 0;
  bool MachineRunning = false;
  bool MachineWasRunning = false;
  bool MachineFeedhold = false;
  bool MachineCycleBit = false;
  std::int16_t MachineInError = 0;  ///< 0 or 4096
  bool BeamOn = false;
  bool BeamWasOn = false;
  float XPosition = 0;
  float YPosition = 0;
  float ZPosition = 0;
  float LastXPosition = 0;
  float LastYPosition = 0;
  float LastZPosition = 0;
  float XOffset = 0;
  float YOffset = 0;
  float ZOffset = 0;
  float FeedOverride = 0;
  float FeedRate = 0;
  std::int16_t RunningBlock = 0;
  std::int16_t RunningBlockShown = 0;
  std::int16_t RunningSlotShown = 0;
  float RunSeconds = 0;
  float XScale = 1;
  float YScale = 1;
  float ZScale = 1;
  std::int16_t PositionDisplayMode = 0;  ///< 0 measured, 1 demand, 2 end of move, 3 following error
  bool RollersOn = false;
};

}  // namespace torvane::core
