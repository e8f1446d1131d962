// A press, a move or a release of the pointer, as the screens see it.
#pragma once

namespace torvane::toolkit {

enum class PointerButton { None, Left, Right, Middle };

/// Place in pixels of the control that was pressed; X grows right, Y down. During a move `Button`
/// is the button that is held, None when none is.
struct PointerEvent {
  int X = 0;
  int Y = 0;
  PointerButton Button = PointerButton::None;
};

/// The same over a plot, in the user units of its scale.
struct PlotPointerEvent {
  double X = 0;
  double Y = 0;
  PointerButton Button = PointerButton::None;
};

}  // namespace torvane::toolkit
