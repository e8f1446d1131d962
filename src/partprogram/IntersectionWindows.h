// Which chords of an arc can meet a line or another arc at all: the walk over the chain looks at
// these and at no others.
//
// A pair of segments ends the walk only if |t| <= 1 and |u| <= 1 as computed. What the computation
// loses is bounded (Epsilon times the lengths involved), so the tests below leave a chord out only
// where the exact value misses the limit by more than that. Angles are true radians.
#pragma once

#include <array>
#include <cstdint>
#include <span>

#include "partprogram/Intersection.h"

namespace torvane::partprogram {

/// Chords `First` up to below `Last`, by the number of their first point.
struct ChordRange {
  std::int64_t First = 0;
  std::int64_t Last = 0;
};

/// A few ranges of chords of one arc; sorted and apart from each other after Settle.
class ChordWindows {
 public:
  explicit ChordWindows(const ChordArc& arc);

  /// Chords at angles a with cos(a - `centre`) in [`low`, `high`], widened by `margin` each way.
  void AddCosine(double centre, double low, double high, double margin);
  void AddAll();
  void Settle();

  [[nodiscard]] std::span<const ChordRange> Ranges() const { return {ranges_.data(), count_}; }

 private:
  void AddAngles(double from, double to);
  void Add(ChordRange range);

  const ChordArc& arc_;
  std::array<ChordRange, 32> ranges_;
  std::size_t count_ = 0;
  bool all_ = false;
};

/// Chords of `arc` that can meet the endless line through `line` within one chord's length.
[[nodiscard]] ChordWindows ChordsNearLine(const ChordArc& arc, const Segment& line);

/// Chords of `first` of which some chord of `second` can end the walk.
[[nodiscard]] ChordWindows ChordsNearArc(const ChordArc& first, const ChordArc& second);

}  // namespace torvane::partprogram
