#include "partprogram/ArcMotion.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace torvane::partprogram {
namespace {

using core::Vector2;

double Rounded(double length) { return core::RoundPlaces(length, 4); }

/// A sweep of 0 is a full circle, the one way to program it.
double DirectedSweep(double sweep, bool positive) {
  if (positive) return sweep <= 0 ? sweep + 360 : sweep;
  return sweep >= 0 ? sweep - 360 : sweep;
}

ArcGeometry ArcAbout(Vector2 centre, double radius, Vector2 previous, Vector2 current,
                     bool positive) {
  const double start = core::XYToPolar(previous.X - centre.X, previous.Y - centre.Y).Angle;
  const double end = core::XYToPolar(current.X - centre.X, current.Y - centre.Y).Angle;
  return {centre, radius, start, DirectedSweep(end - start, positive)};
}

}  // namespace

bool CentreArcTurnsPositive(bool clockwise, std::int16_t yDirection, bool mirrorX, bool mirrorY) {
  const bool same = mirrorX == mirrorY;
  const bool forG02 = yDirection == 1 ? !same : same;
  return clockwise ? forG02 : !forG02;
}

bool RadiusArcTurnsPositive(bool clockwise, bool mirrorX, bool mirrorY) {
  const bool same = mirrorX == mirrorY;
  return clockwise ? same : !same;
}

std::optional<ArcGeometry> SolveCentreArc(Vector2 previous, Vector2 current, double i, double j,
                                          bool positive) {
  const double radius = std::sqrt(i * i + j * j);
  const Vector2 centre{previous.X + i, previous.Y + j};
  const core::Polar start = core::XYToPolar(previous.X - centre.X, previous.Y - centre.Y);
  const core::Polar end = core::XYToPolar(current.X - centre.X, current.Y - centre.Y);
  const double difference = Rounded(std::abs(Rounded(end.Length) - Rounded(start.Length)));
  if (!(difference <= ArcTolerance)) return std::nullopt;
  return ArcGeometry{centre, radius, start.Angle, DirectedSweep(end.Angle - start.Angle, positive)};
}

std::optional<ArcGeometry> SolveRadiusArc(Vector2 previous, Vector2 current, double radius,
                                          bool positive) {
  const bool wide = radius < 0;
  const double size = std::abs(radius);
  double dx = current.X - previous.X;
  const double dy = current.Y - previous.Y;
  if (dx == 0) dx = 1E-15;
  const double chordAngle = core::RadiansToDegrees(std::atan(dy / dx));
  const double half = std::sqrt(dx * dx + dy * dy) / 2;
  if (!(Rounded(half) <= Rounded(size))) return std::nullopt;
  const Vector2 middle{(previous.X + current.X) / 2, (previous.Y + current.Y) / 2};
  const double distance = std::sqrt(std::max(0.0, size * size - half * half));
  std::array<ArcGeometry, 2> candidates;
  for (std::size_t i = 0; i < candidates.size(); ++i) {
    const Vector2 offset = core::PolarToXY(distance, chordAngle + (i == 0 ? 90 : 270));
    candidates[i] =
        ArcAbout({middle.X + offset.X, middle.Y + offset.Y}, size, previous, current, positive);
  }
  const bool secondIsShort = std::abs(candidates[1].Sweep) <= 180;
  return candidates[secondIsShort != wide ? 1 : 0];
}

}  // namespace torvane::partprogram
