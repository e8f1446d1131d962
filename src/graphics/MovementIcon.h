// The icon at the head: a rounded square with its two diagonals, as shapes over the plot.
#pragma once

#include "core/PlotSettings.h"
#include "platform/Canvas.h"

namespace torvane::graphics {

/// Forms that IconShape can have.
enum class IconForm {
  Rectangle = 0,
  Square = 1,
  Oval = 2,
  Circle = 3,
  RoundedRectangle = 4,
  RoundedSquare = 5,
};

/// The form in use.
inline constexpr IconForm MovementIconForm = IconForm::RoundedSquare;

/// The side of the icon in program units: the magnitude of `plotIconSize`, 10 where that is 0, by
/// 8/10 for the forms with corners, 9/10 for the rounded ones, whole for the round ones.
[[nodiscard]] double IconSideOf(double plotIconSize, IconForm form);

/// Puts the icon's three shapes around (x, y), or hides them where they are.
void PlaceMovementIcon(platform::Canvas& canvas, double plotIconSize, double x, double y,
                       bool show);

/// Whether the icon shows.
[[nodiscard]] bool MovementIconVisible(const platform::Canvas& canvas);

}  // namespace torvane::graphics
