#include "partprogram/PathSegment.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace torvane::partprogram {

namespace {

constexpr double RadiansPerDegree = std::numbers::pi / 180.0;

double Between(double a, double b, double share) { return a + (b - a) * share; }

}  // namespace

double Distance(const Position& a, const Position& b) {
  return std::hypot(a.X - b.X, a.Y - b.Y, a.Z - b.Z);
}

Segment Segment::Line(const Position& from, const Position& to) {
  Segment segment;
  segment.from_ = from;
  segment.to_ = to;
  segment.length_ = Distance(from, to);
  return segment;
}

Segment Segment::Arc(const Position& from, const Position& to, const Position& centre,
                     double startAngle, double sweep) {
  Segment segment = Line(from, to);
  segment.centre_ = centre;
  segment.radius_ = std::hypot(from.X - centre.X, from.Y - centre.Y);
  segment.startAngle_ = startAngle * RadiansPerDegree;
  segment.sweep_ = sweep * RadiansPerDegree;
  if (segment.sweep_ != 0) segment.length_ = segment.radius_ * std::abs(segment.sweep_);
  return segment;
}

Position Segment::At(double distance) const {
  if (distance <= 0) return length_ > 0 ? from_ : to_;
  if (distance >= length_) return to_;
  const double share = distance / length_;
  Position at{Between(from_.X, to_.X, share), Between(from_.Y, to_.Y, share),
              Between(from_.Z, to_.Z, share)};
  if (sweep_ != 0) {
    const double angle = startAngle_ + sweep_ * share;
    at.X = centre_.X + radius_ * std::cos(angle);
    at.Y = centre_.Y + radius_ * std::sin(angle);
  }
  return at;
}

double Segment::NearestDistance(const Position& point) const {
  if (length_ <= 0) return 0;
  if (sweep_ == 0) {
    const double along = (point.X - from_.X) * (to_.X - from_.X) +
                         (point.Y - from_.Y) * (to_.Y - from_.Y) +
                         (point.Z - from_.Z) * (to_.Z - from_.Z);
    return std::clamp(along / length_, 0.0, length_);
  }
  constexpr double FullTurn = 2.0 * std::numbers::pi;
  const double angle = std::atan2(point.Y - centre_.Y, point.X - centre_.X);
  double turned = std::fmod((angle - startAngle_) * (sweep_ < 0 ? -1.0 : 1.0), FullTurn);
  if (turned < 0) turned += FullTurn;
  const double whole = std::abs(sweep_);
  // Outside the sweep the nearer end counts.
  if (turned > whole) turned = turned - whole < FullTurn - turned ? whole : 0.0;
  return turned * radius_;
}

}  // namespace torvane::partprogram
