// What stands on the main screen, as data: captions, the screens behind the main keys, the figures
// of normal work, and the colours of each group of controls.
#pragma once

#include <array>

#include "core/ColourTable.h"

namespace torvane::graphics {

inline constexpr const char* FrontEndCaption = "VOLDERAMINE 32000";
inline constexpr const char* FrontEndHeader = "TORVANE 32";

/// MainButton 1 to 7.
struct MainButtonRow {
  const char* Caption;
  /// What CurrentForm becomes; null where it is left alone (the laser screen sets it by itself, and
  /// the graphics state is no screen).
  const char* CurrentForm;
};
inline constexpr std::array<MainButtonRow, 7> MainButtons = {{
    {"    PROGRAM     F1", "ProgramForm"},
    {"       LASER         F2", nullptr},
    {"    MACHINE       F3", "MachineForm"},
    {"     STATUS        F4", "StatusMenuForm"},
    {"    KEYPAD     F5", "UserForm"},
    {"         FILE           F6", "FileHandleForm"},
    {"    GRAPHICS     F7", nullptr},
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

/// Background and text of a group of controls.
struct ControlColours {
  core::ColourName Background;
  core::ColourName Text;
};
inline constexpr ControlColours HeaderColours = {core::ColourName::HeaderBackground,
                                                 core::ColourName::HeaderText};
inline constexpr ControlColours PanelColours = {core::ColourName::PanelBackground,
                                                core::ColourName::PanelText};
/// MainButton, GraphicsButton, PathButton, ProgramButton, ShutdownButton.
inline constexpr ControlColours ButtonColours = {core::ColourName::GeneralButtons,
                                                 core::ColourName::GeneralButtonText};
/// MessageButton at start; the poll changes it.
inline constexpr ControlColours MessageButtonColours = {core::ColourName::OkMessageButton,
                                                        core::ColourName::OkMessageButtonText};
/// TextPanel and StatusPanel.
inline constexpr ControlColours TextColours = {core::ColourName::TextBackground,
                                               core::ColourName::Text};
inline constexpr core::ColourName FormBackground = core::ColourName::PlotBackground;
inline constexpr core::ColourName PositionBackground = core::ColourName::StatusBackground;

}  // namespace torvane::graphics
