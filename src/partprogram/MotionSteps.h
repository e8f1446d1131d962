// The steps that every reader of a program takes alike: which motion a block makes, how a line
// rounds the position, how an arc is solved, what lies outside the travel.
#pragma once

#include <cmath>
#include <cstdint>
#include <optional>
#include <string_view>

#include "core/General.h"
#include "partprogram/ArcMotion.h"
#include "partprogram/Block.h"
#include "partprogram/ErrorMessages.h"
#include "partprogram/ModalState.h"
#include "partprogram/Walker.h"

namespace torvane::partprogram {

/// The block holds no motion word, holds a position word and may go on in the running mode.
[[nodiscard]] bool GoesOnInMode(const Block& block);

/// A motion word other than `own`.
[[nodiscard]] bool HoldsOtherMotion(const Block& block, Word own);

/// "M00" between the first "(" and the first ")" is text and no stop.
[[nodiscard]] bool StopIsText(const Block& block);

/// A line rounds the position itself to 4 places, and not its record alone: the sums of an
/// incremental program stay on 4 places over any number of steps.
class LineRounding {
 public:
  /// Rounds the previous and the current X and Y.
  void Round(ModalState& state);

  /// After a line the start is rounded and the end is not. A circle that is programmed to end where
  /// the line did, in inches or in a turned subroutine, is a whole one all the same.
  [[nodiscard]] bool EndsWhereItBegins(const ModalState& state) const;

 private:
  Point3 unrounded_;  ///< end of the last line before it was rounded
};

/// An arc block that was solved, or not.
struct ArcSolution {
  std::optional<ArcGeometry> Arc;
  bool ByCentre = true;  ///< by I and J, otherwise by R

  /// The critical error of an arc that could not be solved.
  [[nodiscard]] std::string_view Error() const {
    return ByCentre ? Message::InvalidCentre : Message::InvalidRadius;
  }
};

/// From the previous to the current position, by the words R, I and J. `level` is the running entry
/// of the subroutine stack: its turn acts `inSubroutine`, the mirrors outside.
[[nodiscard]] ArcSolution SolveArc(const Block& block, WordReader& reader, const ModalState& state,
                                   bool inSubroutine, const SubLevel& level,
                                   const LineRounding& rounding, bool clockwise,
                                   std::int16_t yDirection);

/// Holds points against the travel: one message an axis and block. `report` takes the message.
class LimitCheck {
 public:
  void BeginBlock() { x_ = y_ = false; }

  /// A point on a limit is inside.
  template <typename Report>
  void Check(const TravelLimits& limits, double x, double y, const Report& report) {
    if (!x_ && (x < limits.XMin || x > limits.XMax)) {
      x_ = true;
      report(Message::LimitX);
    }
    if (!y_ && (y < limits.YMin || y > limits.YMax)) {
      y_ = true;
      report(Message::LimitY);
    }
  }

  /// Walks an arc by whole degrees from its start. A circle that lies inside altogether needs no
  /// walk: no product with a sine is longer than the radius, and rounding keeps the order of sums.
  template <typename Report>
  void CheckArc(const TravelLimits& limits, const ArcGeometry& arc, const Report& report) {
    const core::Vector2 c = arc.Centre;
    if (c.X - arc.Radius >= limits.XMin && c.X + arc.Radius <= limits.XMax &&
        c.Y - arc.Radius >= limits.YMin && c.Y + arc.Radius <= limits.YMax) {
      return;
    }
    const int steps = core::RoundToInt16(std::abs(arc.Sweep));
    const int direction = arc.Sweep < 0 ? -1 : 1;
    for (int step = 0; step <= steps && !(x_ && y_); ++step) {
      const core::Vector2 offset = core::PolarToXY(arc.Radius, arc.StartAngle + direction * step);
      Check(limits, c.X + offset.X, c.Y + offset.Y, report);
    }
  }

 private:
  bool x_ = false;
  bool y_ = false;
};

}  // namespace torvane::partprogram
