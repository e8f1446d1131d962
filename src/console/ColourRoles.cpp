#include "console/ColourRoles.h"

#include <array>

namespace torvane::console {

using core::ColourName;

namespace {

/// In the order of Role.
constexpr std::array<RoleColours, static_cast<std::size_t>(Role::Count)> RoleTable = {{
    {ColourName::HeaderBackground, ColourName::HeaderText},
    {ColourName::PanelBackground, ColourName::PanelText},
    {ColourName::PanelBackground, ColourName::BoldPanelText},
    {ColourName::GeneralButtons, ColourName::GeneralButtonText},
    {ColourName::ReferenceButtons, ColourName::ReferenceButtonText},
    {ColourName::TextBackground, ColourName::Text},
    {ColourName::Text, ColourName::TextBackground},
    {ColourName::XYBackground, ColourName::XYHeaders},
    {ColourName::XYBackground, ColourName::XYPosition},
    {ColourName::MainKeys, ColourName::MainKeyText},
    {ColourName::SubKeys, ColourName::SubKeyText},
    {ColourName::StatusBackground, ColourName::StatusPositionText},
    {ColourName::StatusBackground, ColourName::StatusFeedText},
    {ColourName::OkMessageButton, ColourName::OkMessageButtonText},
    {ColourName::WarningMessageButton, ColourName::WarningMessageButtonText},
    {ColourName::CriticalMessageButton, ColourName::CriticalMessageButtonText},
    {ColourName::PlotBackground, ColourName::PanelBackground},
}};

}  // namespace

RoleColours ColoursOf(Role role) { return RoleTable[static_cast<std::size_t>(role)]; }

void Paint(toolkit::Control& control, Role role, const core::ColourTable& colours) {
  const RoleColours pair = ColoursOf(role);
  control.SetColours(colours[pair.Background], colours[pair.Foreground]);
}

void Paint(toolkit::Form& form, Role role, const core::ColourTable& colours) {
  const RoleColours pair = ColoursOf(role);
  form.SetColours(colours[pair.Background], colours[pair.Foreground]);
}

}  // namespace torvane::console
