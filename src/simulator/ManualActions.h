// The actions of the command word: what each one does, and when it is refused.
#pragma once

#include "simulator/ControllerMemory.h"
#include "simulator/Kinematics.h"
#include "simulator/MachineEvents.h"

namespace torvane::simulator {

/// States of the machine that can bar an action.
namespace Bar {
inline constexpr unsigned Running = 1;  ///< a cycle is open
inline constexpr unsigned Held = 2;
inline constexpr unsigned Error = 4;
}  // namespace Bar

/// What an action is planned from.
struct ActionInput {
  const ControllerMemory& Memory;
  const MachineOptions& Options;
  Position At;
};

struct ManualAction {
  int Word = 0;         ///< value of VR(48)
  unsigned Barred = 0;  ///< states in which it is refused
  bool Jog = false;     ///< ended by VR(48)=0
  bool Reference = false;
  void (*Plan)(const ManualAction&, const ActionInput&, Mover&) = nullptr;
  int X = 0;  ///< axis or direction of the action
  int Y = 0;
  int Z = 0;
};

/// The action of a command word; null for a word that means nothing.
[[nodiscard]] const ManualAction* FindAction(double word);

}  // namespace torvane::simulator
