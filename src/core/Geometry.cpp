#include "core/Geometry.h"

#include <algorithm>
#include <cmath>

namespace torvane::core {

double NormaliseAngle(double degrees) {
  if (degrees >= 0 && degrees < 360) return degrees + 0.0;
  if (!std::isfinite(degrees)) return 0;
  // fmod is exact, and so is each step of taking off 360 again and again: the same bits, in one
  // step whatever the size. Only the last addition to a negative rest can round, up to 360 itself.
  double rest = std::fmod(degrees, 360.0);
  if (rest < 0) rest += 360.0;
  if (rest >= 360.0) rest -= 360.0;
  return rest + 0.0;
}

double RadiansToDegrees(double radians) { return 180.0 * radians / Pi; }

Vector2 PolarToXY(double length, double angle) {
  const double radians = Pi * (NormaliseAngle(angle) / 180.0);
  return {length * std::cos(radians), length * std::sin(radians)};
}

Polar XYToPolar(double dx, double dy) {
  const double length = std::sqrt(dx * dx + dy * dy);
  double angle = 0;
  if (dx == 0) {
    angle = dy < 0 ? 270.0 : dy > 0 ? 90.0 : 0.0;
  } else {
    const double a = RadiansToDegrees(std::atan(std::fabs(dy) / std::fabs(dx)));
    if (dx < 0) {
      angle = dy < 0 ? 180.0 + a : dy > 0 ? 180.0 - a : 180.0;
    } else {
      angle = dy < 0 ? 360.0 - a : dy > 0 ? a : 0.0;
    }
  }
  return {length, NormaliseAngle(angle)};
}

Vector2 RotateAbout(Vector2 centre, double angle, Vector2 point) {
  const Polar polar = XYToPolar(point.X - centre.X, point.Y - centre.Y);
  const Vector2 turned = PolarToXY(polar.Length, polar.Angle + angle);
  return {centre.X + turned.X, centre.Y + turned.Y};
}

bool PointInBox(float x1, float y1, float x2, float y2, float x, float y) {
  return x >= std::min(x1, x2) && x <= std::max(x1, x2) && y >= std::min(y1, y2) &&
         y <= std::max(y1, y2);
}

}  // namespace torvane::core
