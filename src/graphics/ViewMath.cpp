#include "graphics/ViewMath.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace torvane::graphics {

namespace {

constexpr double CursorsAcross = 64;
constexpr double SmallestCursor = 10;
constexpr double ZoomOutFactor = 1.5;
/// A selection must be longer than this on both sides.
constexpr double ShortestSide = 1;

struct Range {
  double Low = 0;
  double High = 0;
};

Range Ordered(float a, float b) { return {std::min(a, b), std::max(a, b)}; }

Range Grown(Range range) {
  const double half = (range.High - range.Low) / 2;
  const double centre = range.Low + half;
  return {centre - ZoomOutFactor * half, centre + ZoomOutFactor * half};
}

void SetCorners(core::PlotView& view, Range x, Range y, std::int16_t yDirection) {
  view.Corner1X = static_cast<float>(x.Low);
  view.Corner2X = static_cast<float>(x.High);
  view.Corner1Y = static_cast<float>(yDirection == 1 ? y.High : y.Low);
  view.Corner2Y = static_cast<float>(yDirection == 1 ? y.Low : y.High);
  view.ViewZoomed = true;
}

}  // namespace

double CursorSizeOf(const core::PlotView& view) {
  const double size = std::abs(static_cast<double>(view.Corner2X) - view.Corner1X) / CursorsAcross;
  return size == 0 ? SmallestCursor : size;
}

core::PlotView ZoomedOut(const core::PlotView& view, std::int16_t yDirection) {
  core::PlotView zoomed = view;
  SetCorners(zoomed, Grown(Ordered(view.Corner1X, view.Corner2X)),
             Grown(Ordered(view.Corner1Y, view.Corner2Y)), yDirection);
  return zoomed;
}

std::optional<core::PlotView> ZoomedTo(const core::PlotView& view, const Selection& selection,
                                       CanvasSize canvas, std::int16_t yDirection) {
  const Range x = Ordered(selection.X1, selection.X2);
  const Range y = Ordered(selection.Y1, selection.Y2);
  const double wide = x.High - x.Low;
  const double high = y.High - y.Low;
  const double width = wide == 0 ? high : wide;
  const double height = high == 0 ? wide : high;
  if (!(width > ShortestSide) || !(height > ShortestSide)) return std::nullopt;
  const double boxAspect = canvas.Width / canvas.Height;
  core::PlotView zoomed = view;
  if (width / height >= boxAspect) {
    SetCorners(zoomed, {x.Low, x.Low + width}, {y.Low, y.Low + width / boxAspect}, yDirection);
  } else {
    SetCorners(zoomed, {x.Low, x.Low + boxAspect * height}, {y.Low, y.Low + height}, yDirection);
  }
  return zoomed;
}

core::PlotView PannedTo(const core::PlotView& view, float x, float y) {
  const double halfX = (static_cast<double>(view.Corner2X) - view.Corner1X) / 2;
  const double halfY = (static_cast<double>(view.Corner2Y) - view.Corner1Y) / 2;
  core::PlotView panned = view;
  panned.Corner1X = static_cast<float>(x - halfX);
  panned.Corner2X = static_cast<float>(x + halfX);
  panned.Corner1Y = static_cast<float>(y - halfY);
  panned.Corner2Y = static_cast<float>(y + halfY);
  panned.ViewZoomed = true;
  return panned;
}

void MoveCursor(const core::PlotView& view, std::int16_t yDirection, double step, CursorMove move,
                float& x, float& y) {
  const auto towards = [step](float& at, float edge, bool grows) {
    const double moved = grows ? at + step : at - step;
    at = static_cast<float>(grows ? std::min<double>(moved, edge) : std::max<double>(moved, edge));
  };
  const bool upGrows = yDirection == 1;
  switch (move) {
    case CursorMove::Left:
      return towards(x, view.Corner1X, false);
    case CursorMove::Right:
      return towards(x, view.Corner2X, true);
    case CursorMove::Up:
      return towards(y, view.Corner1Y, upGrows);
    case CursorMove::Down:
      return towards(y, view.Corner2Y, !upGrows);
  }
}

}  // namespace torvane::graphics
