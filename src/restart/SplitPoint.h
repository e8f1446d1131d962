// The point of an element at which a restart goes on. The element is turned about, so that what is
// still to be cut runs from its end to the split point.
#pragma once

#include <cstdint>

#include "partprogram/DrawRecord.h"
#include "partprogram/SplittingModule.h"

namespace torvane::restart {

/// An element that can be split: a line or an arc.
[[nodiscard]] bool CanSplit(const partprogram::DrawRecord& record);

/// A key of a split.
enum class SplitKey : std::uint8_t {
  Whole,     ///< the whole element remains
  OneMore,   ///< a step more of it remains
  OneLess,   ///< a step less
  LastStep,  ///< one step remains
};

class SplitPoint {
 public:
  /// Begins with the whole of `record` still to be cut. Only for a record that CanSplit.
  explicit SplitPoint(const partprogram::DrawRecord& record);

  /// Moves the split point; what remains is held between one step and the whole element.
  void Press(SplitKey key);

  /// The same to what remains: mm of a line, degrees of an arc by magnitude, whatever the step.
  void SetRemaining(double remaining);

  /// What remains to be cut, from the element's end to the split point.
  [[nodiscard]] const partprogram::DrawRecord& Rest() const { return rest_; }

  /// mm in a line; degrees in an arc, with the sign of the turned sweep.
  [[nodiscard]] float Step() const { return step_; }
  /// The same of what remains, and of the whole element.
  [[nodiscard]] double Remaining() const { return remaining_; }
  [[nodiscard]] double Whole() const { return whole_; }

 private:
  void Place();

  partprogram::DrawRecord turned_;  ///< the whole element, turned about
  partprogram::DrawRecord rest_;
  bool arc_ = false;
  float step_ = 0;
  double whole_ = 0;
  double remaining_ = 0;
};

/// The step of a split: the first of the thirds to thirtieths of the element whose share of
/// `length` (mm) is below 1, one coarser; then not below 0.1 (mm or degrees), then not above one
/// half. `extent` is the length of a line in mm, or the sweep of an arc in degrees with its sign.
[[nodiscard]] float SplitStepOf(double extent, double length);

}  // namespace torvane::restart
