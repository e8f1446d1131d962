// Solves an arc from either form of its words.
#pragma once

#include <cstdint>
#include <optional>

#include "core/General.h"

namespace torvane::partprogram {

/// Degrees; the sweep is negative clockwise as angles are counted, and never 0 from a solver.
struct ArcGeometry {
  core::Vector2 Centre;
  double Radius = 0;
  double StartAngle = 0;
  double Sweep = 0;
};

/// Two radii, or a half chord and a radius, may differ by no more than this, mm.
inline constexpr double ArcTolerance = 0.05;

/// Which way an arc turns: true where its sweep is positive.
/// A centre arc turns by the machine's Y direction, a radius arc does not look at it.
[[nodiscard]] bool CentreArcTurnsPositive(bool clockwise, std::int16_t yDirection, bool mirrorX,
                                          bool mirrorY);
[[nodiscard]] bool RadiusArcTurnsPositive(bool clockwise, bool mirrorX, bool mirrorY);

/// From `previous` to `current` about previous + (i, j). Nothing where the two radii, rounded to 4
/// places, differ by more than ArcTolerance.
[[nodiscard]] std::optional<ArcGeometry> SolveCentreArc(core::Vector2 previous,
                                                        core::Vector2 current, double i, double j,
                                                        bool positive);

/// From `previous` to `current` with radius |radius|: at most 180 degrees for a positive radius, at
/// least 180 for a negative one. Nothing where half the chord, rounded to 4 places, is longer.
[[nodiscard]] std::optional<ArcGeometry> SolveRadiusArc(core::Vector2 previous,
                                                        core::Vector2 current, double radius,
                                                        bool positive);

}  // namespace torvane::partprogram
