// Directions of travel at the ends of an element, degrees.
#pragma once

#include "core/General.h"

namespace torvane::partprogram {

/// Direction of travel at `angle` of an arc of this sweep; a sweep of 0 counts as positive.
[[nodiscard]] inline double ArcTangent(double angle, double sweep) {
  const double at = core::NormaliseAngle(angle);
  return core::NormaliseAngle(sweep < 0 ? at - 90.0 : at + 90.0);
}

/// Direction in which an arc ends.
[[nodiscard]] inline double ArcExit(double startAngle, double sweep) {
  return ArcTangent(startAngle + sweep, sweep);
}

/// True where `angle` lies within `halfWidth` of `direction`, edges inside, directly or a whole
/// turn to either side.
[[nodiscard]] inline bool WithinAngle(double angle, double direction, double halfWidth) {
  const double low = direction - halfWidth;
  const double high = direction + halfWidth;
  const auto inside = [&](double value) { return low <= value && value <= high; };
  return inside(angle) || inside(angle - 360.0) || inside(angle + 360.0);
}

}  // namespace torvane::partprogram
