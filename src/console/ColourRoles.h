// The pairs of colours that controls are painted from.
#pragma once

#include "core/ColourTable.h"
#include "toolkit/Control.h"
#include "toolkit/Form.h"

namespace torvane::console {

/// What a control is, for its colours.
enum class Role {
  Header,           ///< title panels
  Panel,            ///< forms, body panels, frames, labels
  Bold,             ///< emphasised labels
  General,          ///< ordinary buttons, options, toggles
  Reference,        ///< reference buttons of the machine screen
  Entry,            ///< entry boxes, lists, text lines
  EntryInverse,     ///< the chosen row of a list
  XYHeader,         ///< captions of position read-outs
  XYPosition,       ///< figures of position read-outs
  MainKey,          ///< keys of the pads
  SubKey,           ///< cursor, delete and shift keys of the pads
  StatusPosition,   ///< position figures of the main screen
  StatusFeed,       ///< feed figure of the main screen
  OkMessage,        ///< message button, no message
  WarningMessage,   ///< message button, a warning is in force
  CriticalMessage,  ///< message button, the machine is held
  Plot,             ///< canvases
  Count
};

/// Background and foreground of a role.
struct RoleColours {
  core::ColourName Background;
  core::ColourName Foreground;
};

[[nodiscard]] RoleColours ColoursOf(Role role);

void Paint(toolkit::Control& control, Role role, const core::ColourTable& colours);
void Paint(toolkit::Form& form, Role role, const core::ColourTable& colours);

}  // namespace torvane::console
