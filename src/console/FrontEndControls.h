// What is shown on the main screen, as data: captions, the screens of the main keys, the figures.
#pragma once

#include <array>

#include "core/ColourTable.h"
#include "core/ScreenNames.h"

namespace torvane::console {

inline constexpr const char* FrontEndCaption = "VOLDERAMINE 32000";
inline constexpr const char* FrontEndHeader = "TORVANE 32";

/// MainButton 1 to 7: the screen that it opens, and whether CurrentForm becomes its name there and
/// then (the laser screen sets it by itself, and the graphics state is no screen).
struct MainButtonRow {
  const char* Caption;
  const char* Screen;
  bool SetsCurrent;
};
inline constexpr std::array<MainButtonRow, 7> MainButtons = {{
    {"    PROGRAM     F1", core::ScreenNames::ProgramForm, true},
    {"       LASER         F2", core::ScreenNames::LaserStatusForm, false},
    {"    MACHINE       F3", core::ScreenNames::MachineForm, true},
    {"     STATUS        F4", core::ScreenNames::StatusMenuForm, true},
    {"    KEYPAD     F5", core::ScreenNames::UserForm, true},
    {"         FILE           F6", core::ScreenNames::FileHandleForm, true},
    {"    GRAPHICS     F7", nullptr, false},
}};

/// ProgramButton 1 and 2.
inline constexpr std::array<const char*, 2> ProgramButtonCaptions = {"PROGRAM 1   F10",
                                                                     "PROGRAM 2   F11"};
inline constexpr const char* MessageButtonCaption = "MESSAGES  F9";

/// ShutdownButton: in normal work, in the graphics state, while a mode is on.
inline constexpr const char* ShutdownCaption = " SHUTDOWN   F12";
inline constexpr const char* ExitGraphicsCaption = "E&XIT";
inline constexpr const char* CancelModeCaption = "&CANCEL";

/// TextPanel in the graphics state.
inline constexpr const char* GraphicsText = "GRAPHICS";

/// GraphicsButton 1 to 4 and the two-state buttons beside them.
inline constexpr std::array<const char*, 4> GraphicsButtonCaptions = {"&REDRAW", "&ZOOM IN",
                                                                      "ZOOM &OUT", "&PAN"};
inline constexpr const char* KerfButtonCaption = "SHOW &KERF";
inline constexpr const char* LimitsButtonCaption = "SHOW &LIMITS";

/// PositionLabel and PositionText 1 to 6. The third axis's partner and the override stay hidden in
/// normal work.
struct PositionRow {
  const char* Label;
  bool Shown;
  core::ColourName Colour;
};
inline constexpr std::array<PositionRow, 6> PositionRows = {{
    {"X", true, core::ColourName::StatusPositionText},
    {"Y", true, core::ColourName::StatusPositionText},
    {"Z", true, core::ColourName::StatusPositionText},
    {"T", false, core::ColourName::StatusPositionText},
    {"F", false, core::ColourName::StatusFeedText},
    {"F", true, core::ColourName::StatusFeedText},
}};

}  // namespace torvane::console
