// Where two elements of a profile meet once both are offset. An arc counts as a chain of chords.
#pragma once

#include <cstdint>

#include "core/General.h"
#include "partprogram/DrawRecord.h"

namespace torvane::partprogram {

/// mm.
struct Segment {
  core::Vector2 From;
  core::Vector2 To;
};

enum class Meeting : std::uint8_t {
  None = 0,       ///< parallel, or an arc without chords; the point is (-999, -999)
  Extension = 1,  ///< on an extension of one of the two
  Inside = 2,     ///< inside both
};

struct Intersection {
  Meeting Kind = Meeting::None;
  core::Vector2 Point{core::NoValue, core::NoValue};
};

/// Two lines in parametric form: the point at t of the first and u of the second. The test takes
/// absolute values, so a point up to one length behind a start counts as inside.
[[nodiscard]] inline Intersection IntersectLines(const Segment& first, const Segment& second) {
  const double dx1 = first.To.X - first.From.X;
  const double dy1 = first.To.Y - first.From.Y;
  const double dx2 = second.To.X - second.From.X;
  const double dy2 = second.To.Y - second.From.Y;
  const double d = dx1 * dy2 - dy1 * dx2;
  if (d == 0) return {};
  const double apartX = first.From.X - second.From.X;
  const double apartY = first.From.Y - second.From.Y;
  const double t = (apartY * dx2 - apartX * dy2) / d;
  const double u = (apartY * dx1 - apartX * dy1) / d;
  const bool beyond = t > 1 || t < -1 || u > 1 || u < -1;
  return {beyond ? Meeting::Extension : Meeting::Inside,
          {first.From.X + t * dx1, first.From.Y + t * dy1}};
}

/// An arc as a chain of chords between points 0 to `Chords`. mm and degrees.
struct ChordArc {
  core::Vector2 Centre;
  double Radius = 0;
  double Start = 0;
  double Sweep = 0;
  std::int64_t Chords = 0;  ///< chords a degree times the whole degrees of the sweep

  [[nodiscard]] core::Vector2 Point(std::int64_t index) const {
    const double angle = Start + Sweep * static_cast<double>(index) / static_cast<double>(Chords);
    const core::Vector2 offset = core::PolarToXY(Radius, angle);
    return {Centre.X + offset.X, Centre.Y + offset.Y};
  }
};

/// The chain of an arc record. A sweep below one degree, or a record that holds what is no finite
/// number, has no chords. `chordsPerDegree` below 1 counts as 10.
[[nodiscard]] ChordArc ChordsOf(const DrawRecord& arc, int chordsPerDegree);

[[nodiscard]] Segment SegmentOf(const DrawRecord& line);

/// True where a chord's result ends the walk: inside both, and in the box of `box`, as singles.
[[nodiscard]] inline bool EndsWalk(const Intersection& found, const Segment& box) {
  return found.Kind == Meeting::Inside &&
         core::PointInBox(static_cast<float>(box.From.X), static_cast<float>(box.From.Y),
                          static_cast<float>(box.To.X), static_cast<float>(box.To.Y),
                          static_cast<float>(found.Point.X), static_cast<float>(found.Point.Y));
}

/// Each of these gives what the walk over all chords gives, to the last bit: the first chord (pair
/// of chords) in walking order that ends it, or else the point of the last one that is not
/// parallel. A line with an arc after it walks the arc from its end, one with the arc before it
/// from its start; of two arcs the first is walked from its start and, for each of its chords, the
/// second from its end. A line that holds what is no finite number meets nothing.
[[nodiscard]] Intersection IntersectLineArc(const Segment& line, const ChordArc& arc);
[[nodiscard]] Intersection IntersectArcLine(const ChordArc& arc, const Segment& line);
[[nodiscard]] Intersection IntersectArcs(const ChordArc& first, const ChordArc& second);

/// Where the `previous` element, a line or an arc, meets the `current` one. Elements that hold what
/// is no finite number meet nowhere.
[[nodiscard]] Intersection FindIntersection(const DrawRecord& previous, const DrawRecord& current,
                                            int chordsPerDegree);

}  // namespace torvane::partprogram
