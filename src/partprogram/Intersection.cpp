#include "partprogram/Intersection.h"

#include <algorithm>
#include <cmath>

#include "partprogram/IntersectionWindows.h"

namespace torvane::partprogram {

namespace {

constexpr int DefaultChordsPerDegree = 10;

enum class Direction : std::uint8_t { Forward, Backward };

bool IsPoint(const Segment& segment) {
  return segment.From.X == segment.To.X && segment.From.Y == segment.To.Y;
}

bool IsFinite(const Segment& segment) {
  return std::isfinite(segment.From.X) && std::isfinite(segment.From.Y) &&
         std::isfinite(segment.To.X) && std::isfinite(segment.To.Y);
}

/// Goes through the chords of a range in walking order until `visit` of one is true. Each point of
/// the chain is worked out once.
template <class Visit>
bool WalkRange(const ChordArc& arc, ChordRange range, Direction direction, Visit&& visit) {
  const bool forward = direction == Direction::Forward;
  const std::int64_t step = forward ? 1 : -1;
  std::int64_t index = forward ? range.First : range.Last;
  const std::int64_t end = forward ? range.Last : range.First;
  for (core::Vector2 from = arc.Point(index); index != end; index += step) {
    const core::Vector2 to = arc.Point(index + step);
    if (visit(Segment{from, to})) return true;
    from = to;
  }
  return false;
}

template <class Visit>
bool WalkWindows(const ChordArc& arc, const ChordWindows& windows, Direction direction,
                 Visit&& visit) {
  const auto walk = [&](const ChordRange& range) {
    return WalkRange(arc, range, direction, visit);
  };
  const auto ranges = windows.Ranges();
  return direction == Direction::Forward ? std::any_of(ranges.begin(), ranges.end(), walk)
                                         : std::any_of(ranges.rbegin(), ranges.rend(), walk);
}

Direction Opposite(Direction direction) {
  return direction == Direction::Forward ? Direction::Backward : Direction::Forward;
}

/// Walks the chain against a line; `meet` forms the pair in its order.
template <class Meet>
Intersection WalkAgainstLine(const ChordArc& arc, Direction direction, const Segment& line,
                             Meet&& meet) {
  Intersection found;
  if (arc.Chords <= 0 || arc.Radius == 0 || IsPoint(line) || !IsFinite(line)) return found;
  const bool ended =
      WalkWindows(arc, ChordsNearLine(arc, line), direction, [&](const Segment& chord) {
        found = meet(chord);
        return EndsWalk(found, line);
      });
  if (ended) return found;
  // The last chord that is not parallel decides.
  found = {};
  WalkRange(arc, {0, arc.Chords}, Opposite(direction), [&](const Segment& chord) {
    found = meet({chord.To, chord.From});
    return found.Kind != Meeting::None;
  });
  if (found.Kind != Meeting::None) found.Kind = Meeting::Extension;
  return found;
}

/// The point of the last pair of chords that is not parallel.
Intersection LastPair(const ChordArc& first, const ChordArc& second) {
  Intersection found;
  bool anyLength = false;
  WalkRange(first, {0, first.Chords}, Direction::Backward, [&](const Segment& back) {
    const Segment chord1{back.To, back.From};
    if (IsPoint(chord1)) return false;
    WalkRange(second, {0, second.Chords}, Direction::Forward, [&](const Segment& forward) {
      anyLength = anyLength || !IsPoint(forward);
      found = IntersectLines(chord1, {forward.To, forward.From});
      return found.Kind != Meeting::None;
    });
    return found.Kind != Meeting::None || !anyLength;
  });
  if (found.Kind != Meeting::None) found.Kind = Meeting::Extension;
  return found;
}

}  // namespace

ChordArc ChordsOf(const DrawRecord& arc, int chordsPerDegree) {
  ChordArc chain{{arc.CentrePoint.X, arc.CentrePoint.Y},
                 arc[Figure::Radius],
                 arc[Figure::StartAngle],
                 arc[Figure::Sweep],
                 0};
  const bool finite = std::isfinite(chain.Centre.X) && std::isfinite(chain.Centre.Y) &&
                      std::isfinite(chain.Radius) && std::isfinite(chain.Start) &&
                      std::isfinite(chain.Sweep);
  const int perDegree = chordsPerDegree < 1 ? DefaultChordsPerDegree : chordsPerDegree;
  if (finite) {
    const std::int64_t degrees = core::TruncateToInt16(std::fabs(chain.Sweep));
    chain.Chords = degrees * perDegree;
  }
  return chain;
}

Segment SegmentOf(const DrawRecord& line) {
  return {{line.StartPoint.X, line.StartPoint.Y}, {line.EndPoint.X, line.EndPoint.Y}};
}

Intersection IntersectLineArc(const Segment& line, const ChordArc& arc) {
  return WalkAgainstLine(arc, Direction::Backward, line,
                         [&](const Segment& chord) { return IntersectLines(line, chord); });
}

Intersection IntersectArcLine(const ChordArc& arc, const Segment& line) {
  return WalkAgainstLine(arc, Direction::Forward, line,
                         [&](const Segment& chord) { return IntersectLines(chord, line); });
}

Intersection IntersectArcs(const ChordArc& first, const ChordArc& second) {
  Intersection found;
  if (first.Chords <= 0 || second.Chords <= 0 || first.Radius == 0 || second.Radius == 0) {
    return found;
  }
  const bool ended = WalkWindows(
      first, ChordsNearArc(first, second), Direction::Forward, [&](const Segment& chord1) {
        if (IsPoint(chord1)) return false;
        return WalkWindows(second, ChordsNearLine(second, chord1), Direction::Backward,
                           [&](const Segment& chord2) {
                             found = IntersectLines(chord1, chord2);
                             return EndsWalk(found, chord1);
                           });
      });
  return ended ? found : LastPair(first, second);
}

Intersection FindIntersection(const DrawRecord& previous, const DrawRecord& current,
                              int chordsPerDegree) {
  const bool arcBefore = previous.Code == RecordCode::ArcProfile;
  const bool arcBehind = current.Code == RecordCode::ArcProfile;
  if (arcBefore && arcBehind) {
    return IntersectArcs(ChordsOf(previous, chordsPerDegree), ChordsOf(current, chordsPerDegree));
  }
  if (arcBefore) {
    return IntersectArcLine(ChordsOf(previous, chordsPerDegree), SegmentOf(current));
  }
  if (arcBehind) {
    return IntersectLineArc(SegmentOf(previous), ChordsOf(current, chordsPerDegree));
  }
  const Segment first = SegmentOf(previous);
  const Segment second = SegmentOf(current);
  return IsFinite(first) && IsFinite(second) ? IntersectLines(first, second) : Intersection{};
}

}  // namespace torvane::partprogram
