// The walk over every chord of an arc against every chord of another, as it is told: what the
// search for the same meeting point is held against.
#pragma once

#include <vector>

#include "partprogram/Intersection.h"

namespace torvane::tests {

using namespace torvane::partprogram;

/// The ends of an arc's chords, from its start on.
inline std::vector<core::Vector2> ChordPoints(const ChordArc& arc) {
  std::vector<core::Vector2> points;
  for (std::int64_t i = 0; arc.Chords > 0 && i <= arc.Chords; ++i) points.push_back(arc.Point(i));
  return points;
}

inline std::vector<core::Vector2> Reversed(std::vector<core::Vector2> points) {
  return {points.rbegin(), points.rend()};
}

/// Takes a pair's result into `found`; true where it ends the walk.
inline bool TakePair(const Segment& first, const Segment& second, const Segment& box,
                     Intersection& found) {
  const Intersection pair = IntersectLines(first, second);
  if (pair.Kind == Meeting::None) return false;
  found = pair;
  if (EndsWalk(pair, box)) return true;
  found.Kind = Meeting::Extension;
  return false;
}

inline Intersection WalkLineArc(const Segment& line, const ChordArc& arc) {
  Intersection found;
  const auto points = Reversed(ChordPoints(arc));
  for (std::size_t i = 1; i < points.size(); ++i) {
    if (TakePair(line, {points[i - 1], points[i]}, line, found)) break;
  }
  return found;
}

inline Intersection WalkArcLine(const ChordArc& arc, const Segment& line) {
  Intersection found;
  const auto points = ChordPoints(arc);
  for (std::size_t i = 1; i < points.size(); ++i) {
    if (TakePair({points[i - 1], points[i]}, line, line, found)) break;
  }
  return found;
}

inline Intersection WalkArcs(const ChordArc& first, const ChordArc& second) {
  Intersection found;
  const auto points1 = ChordPoints(first);
  const auto points2 = Reversed(ChordPoints(second));
  for (std::size_t i = 1; i < points1.size(); ++i) {
    const Segment chord{points1[i - 1], points1[i]};
    for (std::size_t j = 1; j < points2.size(); ++j) {
      if (TakePair(chord, {points2[j - 1], points2[j]}, chord, found)) return found;
    }
  }
  return found;
}

}  // namespace torvane::tests
