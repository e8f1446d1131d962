// Plane geometry in degrees and millimetres. Pure functions.
#pragma once

namespace torvane::core {

/// Pi to nine figures, everywhere in the system: results hold to the digit.
inline constexpr double Pi = 3.14159265;

/// 0 up to below 360. A value that is no finite angle gives 0.
[[nodiscard]] double NormaliseAngle(double degrees);
[[nodiscard]] double RadiansToDegrees(double radians);

struct Vector2 {
  double X = 0;
  double Y = 0;
};
struct Polar {
  double Length = 0;
  double Angle = 0;  ///< degrees, 0 up to below 360
};

/// The vector of a length (mm) at an angle (degrees, normalised first).
[[nodiscard]] Vector2 PolarToXY(double length, double angle);
/// The angle comes from the arctangent of |dy| over |dx| and the two signs; (0, 0) has angle 0.
[[nodiscard]] Polar XYToPolar(double dx, double dy);
/// `point` turned by `angle` degrees about `centre`, by way of its polar form.
[[nodiscard]] Vector2 RotateAbout(Vector2 centre, double angle, Vector2 point);
/// True inside or on the edge, corners in any order, compared as singles.
[[nodiscard]] bool PointInBox(float x1, float y1, float x2, float y2, float x, float y);

}  // namespace torvane::core
