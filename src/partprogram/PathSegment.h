// Lines and arcs of a path: their lengths and the points on them.
#pragma once

namespace torvane::partprogram {

/// mm.
struct Position {
  double X = 0;
  double Y = 0;
  double Z = 0;
};

[[nodiscard]] double Distance(const Position& a, const Position& b);

/// A line or an arc in the plane of the sheet. Its ends are exactly those given.
class Segment {
 public:
  Segment() = default;
  [[nodiscard]] static Segment Line(const Position& from, const Position& to);
  /// `startAngle` and `sweep` in degrees; a positive sweep turns from X to Y.
  [[nodiscard]] static Segment Arc(const Position& from, const Position& to, const Position& centre,
                                   double startAngle, double sweep);

  /// mm.
  [[nodiscard]] double Length() const { return length_; }
  /// `distance` mm from the start, held to the ends.
  [[nodiscard]] Position At(double distance) const;
  [[nodiscard]] const Position& End() const { return to_; }
  /// How far from the start the point of the segment lies that is nearest to `point`, mm.
  [[nodiscard]] double NearestDistance(const Position& point) const;

 private:
  Position from_;
  Position to_;
  Position centre_;
  double radius_ = 0;
  double startAngle_ = 0;  ///< radians
  double sweep_ = 0;       ///< radians; 0 for a line
  double length_ = 0;
};

}  // namespace torvane::partprogram
