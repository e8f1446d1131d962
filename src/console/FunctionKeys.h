// The global keys of the console: what each does in the normal state and in the graphics state.
#pragma once

#include "core/System.h"
#include "toolkit/Key.h"

namespace torvane::console {

/// What a global key asks for. `Number` of KeyAction says which where there are several.
enum class KeyCommand {
  None,
  OpenScreen,     ///< main key 1 to 6
  EnterGraphics,  ///< also back to the first graphics state from a mode
  OpenMessages,
  ChangeProgram,  ///< slot 1 or 2
  Shutdown,
  GraphicsButton,  ///< 1 to 4
  FlipLimits,
  FlipKerf,
  LeaveGraphics,
  PathButton,   ///< 1 to 6
  LeaveRestart  ///< leave the visual restart and clean up behind it
};

struct KeyAction {
  KeyCommand Command = KeyCommand::None;
  int Number = 0;

  friend bool operator==(const KeyAction&, const KeyAction&) = default;
};

/// The action of a key in this state; None for a key that is dead in it.
[[nodiscard]] KeyAction FunctionKeyAction(toolkit::Key key, const core::ConsoleState& state);

/// Which keys a screen hands on to the global ones.
enum class GlobalKeys {
  None,     ///< the pads and the dialogs
  All,      ///< F1 to F12 and K
  AllButK,  ///< F1 to F12
  NoSlots   ///< F1 to F9, F12 and K: the slot can not be changed from these screens
};

[[nodiscard]] bool IsGlobalKey(toolkit::Key key, GlobalKeys set);

}  // namespace torvane::console
