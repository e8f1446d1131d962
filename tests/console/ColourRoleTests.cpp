// Which pair of configured colours each kind of control is painted from.
#include <gtest/gtest.h>

#include "console/ColourRoles.h"

namespace torvane::console {
namespace {

using core::ColourName;

struct RoleCase {
  Role Which;
  ColourName Background;
  ColourName Foreground;
};

TEST(ColourRoles, EachRoleHasItsPair) {
  const RoleCase cases[] = {
      {Role::Header, ColourName::HeaderBackground, ColourName::HeaderText},
      {Role::Panel, ColourName::PanelBackground, ColourName::PanelText},
      {Role::Bold, ColourName::PanelBackground, ColourName::BoldPanelText},
      {Role::General, ColourName::GeneralButtons, ColourName::GeneralButtonText},
      {Role::Reference, ColourName::ReferenceButtons, ColourName::ReferenceButtonText},
      {Role::Entry, ColourName::TextBackground, ColourName::Text},
      {Role::EntryInverse, ColourName::Text, ColourName::TextBackground},
      {Role::XYHeader, ColourName::XYBackground, ColourName::XYHeaders},
      {Role::XYPosition, ColourName::XYBackground, ColourName::XYPosition},
      {Role::MainKey, ColourName::MainKeys, ColourName::MainKeyText},
      {Role::SubKey, ColourName::SubKeys, ColourName::SubKeyText},
      {Role::StatusPosition, ColourName::StatusBackground, ColourName::StatusPositionText},
      {Role::StatusFeed, ColourName::StatusBackground, ColourName::StatusFeedText},
      {Role::OkMessage, ColourName::OkMessageButton, ColourName::OkMessageButtonText},
      {Role::WarningMessage, ColourName::WarningMessageButton,
       ColourName::WarningMessageButtonText},
      {Role::CriticalMessage, ColourName::CriticalMessageButton,
       ColourName::CriticalMessageButtonText},
  };
  for (const auto& row : cases) {
    const RoleColours pair = ColoursOf(row.Which);
    EXPECT_EQ(pair.Background, row.Background) << static_cast<int>(row.Which);
    EXPECT_EQ(pair.Foreground, row.Foreground) << static_cast<int>(row.Which);
  }
}

}  // namespace
}  // namespace torvane::console
