#include "graphics/RestartMarks.h"

namespace torvane::graphics {

namespace {

using platform::Overlay;

constexpr std::array<Overlay, 4> Shapes = {Overlay::TravelLine1, Overlay::TravelLine2,
                                           Overlay::EntryLine1, Overlay::EntryLine2};

platform::UserPoint At(core::Vector2 point) { return {point.X, point.Y}; }

}  // namespace

std::array<std::array<platform::UserPoint, 2>, 4> MarkSegments(const RestartMarks& marks,
                                                               double size) {
  const double half = size / 2;
  const core::Vector2 e = marks.Entry;
  return {
      {{At(marks.Head), At(marks.Position)},
       {At(marks.Position), At(e)},
       {platform::UserPoint{e.X - half, e.Y - half}, platform::UserPoint{e.X + half, e.Y + half}},
       {platform::UserPoint{e.X - half, e.Y + half}, platform::UserPoint{e.X + half, e.Y - half}}}};
}

namespace {

/// The shapes from `first` on.
void ShowFrom(std::size_t first, platform::Canvas& canvas, const RestartMarks& marks, double size) {
  const auto segments = MarkSegments(marks, size);
  for (std::size_t i = first; i < Shapes.size(); ++i) {
    auto shape = canvas.GetOverlay(Shapes[i]);
    shape.From = segments[i][0];
    shape.To = segments[i][1];
    shape.Visible = true;
    canvas.SetOverlay(Shapes[i], shape);
  }
}

}  // namespace

void ShowRestartMarks(platform::Canvas& canvas, const RestartMarks& marks, double size) {
  ShowFrom(0, canvas, marks, size);
}

void ShowPlaceMark(platform::Canvas& canvas, const core::Vector2& point, double size) {
  constexpr std::size_t Cross = 2;
  ShowFrom(Cross, canvas, {point, point, point}, size);
}

void HideRestartMarks(platform::Canvas& canvas) {
  for (const Overlay which : Shapes) {
    auto shape = canvas.GetOverlay(which);
    shape.Visible = false;
    canvas.SetOverlay(which, shape);
  }
}

}  // namespace torvane::graphics
