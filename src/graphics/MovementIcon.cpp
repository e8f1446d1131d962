#include "graphics/MovementIcon.h"

#include <array>
#include <cmath>

namespace torvane::graphics {

namespace {

using platform::Overlay;
using platform::UserPoint;

/// Where a view has no size yet.
constexpr double UnsizedIcon = 10;

/// Tenths of the size, by form 0 to 5.
constexpr std::array<int, 6> FormTenths = {8, 8, 10, 10, 9, 9};

void MoveShape(platform::Canvas& canvas, Overlay which, UserPoint from, UserPoint to) {
  auto shape = canvas.GetOverlay(which);
  shape.From = from;
  shape.To = to;
  shape.Visible = true;
  canvas.SetOverlay(which, shape);
}

void HideShape(platform::Canvas& canvas, Overlay which) {
  auto shape = canvas.GetOverlay(which);
  shape.Visible = false;
  canvas.SetOverlay(which, shape);
}

}  // namespace

double IconSideOf(double plotIconSize, IconForm form) {
  const double size = plotIconSize == 0 ? UnsizedIcon : std::abs(plotIconSize);
  return size * FormTenths.at(static_cast<std::size_t>(form)) / 10;
}

void PlaceMovementIcon(platform::Canvas& canvas, double plotIconSize, double x, double y,
                       bool show) {
  if (!show) {
    for (const auto which : {Overlay::IconLine1, Overlay::IconLine2, Overlay::IconShape}) {
      HideShape(canvas, which);
    }
    return;
  }
  const double half = IconSideOf(plotIconSize, MovementIconForm) / 2;
  // The shape's top is its high Y where Y grows up the screen.
  const double top = canvas.ScaleHeight() < 0 ? half : -half;
  MoveShape(canvas, Overlay::IconShape, {x - half, y + top}, {x + half, y - top});
  MoveShape(canvas, Overlay::IconLine1, {x - half, y - half}, {x + half, y + half});
  MoveShape(canvas, Overlay::IconLine2, {x - half, y + half}, {x + half, y - half});
}

bool MovementIconVisible(const platform::Canvas& canvas) {
  return canvas.GetOverlay(Overlay::IconShape).Visible;
}

}  // namespace torvane::graphics
