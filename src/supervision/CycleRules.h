// What may not be done during a cycle. The rules test the bits of the last poll: they are a
// courtesy to the operator, not the machine's safety.
#pragma once

#include <cstdint>
#include <span>

#include "core/MachineState.h"
#include "supervision/OperatorDialogs.h"

namespace torvane::supervision {

enum class CycleAction {
  ChangeProgram,
  SelectProgram,
  Jog,
  Reference,
  LoadPosition,
  Move,
  Restart
};

/// The states that forbid an action, and the message that the operator then gets.
struct CycleRule {
  CycleAction Action;
  bool Running;   ///< refused while MachineRunning
  bool Feedhold;  ///< refused while MachineFeedhold
  bool Cycle;     ///< refused while MachineCycleBit
  bool InError;   ///< refused while MachineInError is above 0
  const char* FirstLine;
  const char* SecondLine;
};

[[nodiscard]] std::span<const CycleRule> CycleRules();
[[nodiscard]] const CycleRule& CycleRuleOf(CycleAction action);

/// True when the machine's state forbids the action.
[[nodiscard]] bool ActionRefused(CycleAction action, const core::MachineState& state);

/// The same, and the refusal is shown. The caller leaves everything as it was.
[[nodiscard]] bool RefuseAction(CycleAction action, const core::MachineState& state,
                                OperatorDialogs& dialogs);

/// Bits of the mask of a user key: the states in which it works.
namespace UserKeyState {
inline constexpr std::int16_t Idle = 1;         ///< not busy, not held
inline constexpr std::int16_t Held = 2;         ///< not busy, held
inline constexpr std::int16_t InCycle = 4;      ///< busy, not held
inline constexpr std::int16_t HeldInCycle = 8;  ///< busy, held
}  // namespace UserKeyState

/// A mask of 0 is allowed in all states. Busy is an open cycle or a running program.
[[nodiscard]] bool UserKeyAllowed(std::int16_t mask, const core::MachineState& state);

}  // namespace torvane::supervision
