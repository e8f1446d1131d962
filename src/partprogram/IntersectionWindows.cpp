#include "partprogram/IntersectionWindows.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <numbers>

namespace torvane::partprogram {

namespace {

constexpr double Epsilon = std::numeric_limits<double>::epsilon();
constexpr double TruePi = std::numbers::pi;

/// The system's pi is 3.6e-9 short: over a whole turn points lie this far, in radians, from where
/// their angle says, and a chord over the seam at 0 degrees is as much longer.
constexpr double SeamAngle = 2e-8;

/// A chain that goes round more often is walked whole.
constexpr double MostTurnsDegrees = 720;

double Square(double value) { return value * value; }

double Distance(core::Vector2 a, core::Vector2 b) {
  return std::sqrt(Square(a.X - b.X) + Square(a.Y - b.Y));
}

/// One chord's angle, radians.
double StepAngle(const ChordArc& arc) {
  return std::fabs(arc.Sweep) / static_cast<double>(arc.Chords) * (TruePi / 180) + SeamAngle;
}

/// How far a computed point of the chain can lie from its true place: the rounding of its angle,
/// of cosine and sine, and of the sum with the centre, with room to spare.
double PointError(const ChordArc& arc) {
  const double turns = 1 + (std::fabs(arc.Start) + std::fabs(arc.Sweep)) / 720;
  return 64 * Epsilon * turns * (std::fabs(arc.Centre.X) + std::fabs(arc.Centre.Y) + arc.Radius);
}

/// Longest chord, mm.
double ChordLength(const ChordArc& arc) {
  return arc.Radius * StepAngle(arc) + 2 * PointError(arc);
}

bool CannotBeNarrowed(const ChordArc& arc) {
  return !(arc.Radius > 0) || std::fabs(arc.Sweep) > MostTurnsDegrees;
}

}  // namespace

ChordWindows::ChordWindows(const ChordArc& arc) : arc_(arc) {}

void ChordWindows::AddAll() {
  all_ = true;
  count_ = 1;
  ranges_[0] = {0, arc_.Chords};
}

void ChordWindows::Add(ChordRange range) {
  range.First = std::max<std::int64_t>(range.First, 0);
  range.Last = std::min(range.Last, arc_.Chords);
  if (all_ || range.First >= range.Last) return;
  if (count_ == ranges_.size()) return AddAll();
  ranges_[count_++] = range;
}

void ChordWindows::AddAngles(double from, double to) {
  const double step = std::fabs(arc_.Sweep) / static_cast<double>(arc_.Chords);
  const double width = (to - from) * (180 / core::Pi);
  // Degrees from the arc's start to the window's first edge, in the direction of the sweep.
  const double first =
      arc_.Sweep < 0 ? arc_.Start - to * (180 / core::Pi) : from * (180 / core::Pi) - arc_.Start;
  double edge = core::NormaliseAngle(first) - 360;
  while (edge <= std::fabs(arc_.Sweep)) {
    Add({static_cast<std::int64_t>(std::floor(edge / step)) - 1,
         static_cast<std::int64_t>(std::ceil((edge + width) / step)) + 2});
    edge += 360;
  }
}

void ChordWindows::AddCosine(double centre, double low, double high, double margin) {
  if (low > 1 || high < -1) return;
  const double inner = std::acos(std::clamp(high, -1.0, 1.0)) - margin;
  const double outer = std::acos(std::clamp(low, -1.0, 1.0)) + margin;
  if (outer - inner >= TruePi) return AddAll();
  if (inner <= 0) return AddAngles(centre - outer, centre + outer);
  AddAngles(centre + inner, centre + outer);
  AddAngles(centre - outer, centre - inner);
}

void ChordWindows::Settle() {
  std::sort(ranges_.begin(), ranges_.begin() + static_cast<std::ptrdiff_t>(count_),
            [](const ChordRange& a, const ChordRange& b) { return a.First < b.First; });
  std::size_t kept = 0;
  for (std::size_t i = 0; i < count_; ++i) {
    if (kept > 0 && ranges_[i].First <= ranges_[kept - 1].Last) {
      ranges_[kept - 1].Last = std::max(ranges_[kept - 1].Last, ranges_[i].Last);
    } else {
      ranges_[kept++] = ranges_[i];
    }
  }
  count_ = kept;
}

// With s the signed distance of a chord's ends from the line, the test along the chord is
// |s1| <= |s1 - s2|. On the circle s = R (cos p - q), p counted from the normal of the line, with
// roots p0 and -p0. With A and B half the angles from s1's point to the roots, D the chord's angle,
//   |s1| / R = 2 sin A sin B      and      |s1 - s2| / R <= D (sin A + sin B + D / 2),
// so a chord whose first point lies 3 D or more from both roots misses the limit by at least
// 0.1 of the square of that distance: that is what the lost digits must stay below. A line that
// misses the circle has q beyond 1; |s1| is then greater than for q = 1, which stands for it.
ChordWindows ChordsNearLine(const ChordArc& arc, const Segment& line) {
  ChordWindows windows(arc);
  if (CannotBeNarrowed(arc)) {
    windows.AddAll();
    return windows;
  }
  const double dx = line.To.X - line.From.X;
  const double dy = line.To.Y - line.From.Y;
  const double cx = arc.Centre.X - line.From.X;
  const double cy = arc.Centre.Y - line.From.Y;
  const double length = std::sqrt(dx * dx + dy * dy);
  const double reach = std::sqrt(cx * cx + cy * cy) + 3 * arc.Radius;
  const double lost = (3 * PointError(arc) + 64 * Epsilon * reach) / arc.Radius;
  const double step = StepAngle(arc);
  const double q = -(dx * cy - dy * cx) / (length * arc.Radius);
  if (std::fabs(q) > 1 + 2 * step + lost) return windows;
  const double held = std::clamp(q, -1.0, 1.0);
  const double margin = 3 * step + std::sqrt(20 * lost) + SeamAngle;
  windows.AddCosine(std::atan2(dy, dx) + TruePi / 2, held, held, margin);
  windows.Settle();
  return windows;
}

// Let w be the way between the first points of two chords, of lengths L1 and L2. Where |w| is at
// least 4 (L1 + L2), |t| and |u| are both at most 1 only if both chords lie along w to within the
// lost digits (|w| <= |t| L1 + |u| L2 in exact numbers): then the line of the first chord touches
// the second circle. So only two kinds of chords of the first arc count: those whose first point
// is within 4 (L1 + L2) of the second circle, and those whose line is a tangent of it.
ChordWindows ChordsNearArc(const ChordArc& first, const ChordArc& second) {
  ChordWindows windows(first);
  if (CannotBeNarrowed(first) || CannotBeNarrowed(second)) {
    windows.AddAll();
    return windows;
  }
  const double r1 = first.Radius;
  const double r2 = second.Radius;
  const double apart = Distance(first.Centre, second.Centre);
  const double length1 = ChordLength(first);
  const double length2 = ChordLength(second);
  const double error1 = PointError(first);
  const double error2 = PointError(second);
  const double near = 4 * (length1 + length2) + error1 + error2 + 64 * Epsilon * (apart + r1 + r2);
  const double touching = r1 * Square(StepAngle(first)) + r2 * Square(StepAngle(second)) +
                          error1 * (2 + 4 * (apart + r2) / std::max(length1 - 4 * error1, error1)) +
                          4 * error2 + 256 * Epsilon * (apart + r1 + r2);
  if (apart <= 1e-9 * (r1 + r2)) {  // one centre: all chords are alike
    if (std::fabs(r1 - r2) <= std::max(near, touching) + apart) windows.AddAll();
    return windows;
  }
  const double centre =
      std::atan2(first.Centre.Y - second.Centre.Y, first.Centre.X - second.Centre.X);
  const double margin = 2 * StepAngle(first) + SeamAngle;
  const double squares = Square(apart) + Square(r1);
  const double scale = 2 * apart * r1;
  const double slack = 64 * Epsilon * (squares + Square(r2 + near)) / scale;
  windows.AddCosine(centre, (Square(std::max(r2 - near, 0.0)) - squares) / scale - slack,
                    (Square(r2 + near) - squares) / scale + slack, margin);
  for (const double side : {-r2, r2}) {
    windows.AddCosine(centre, (side - r1 - touching) / apart, (side - r1 + touching) / apart,
                      margin);
  }
  windows.Settle();
  return windows;
}

}  // namespace torvane::partprogram
