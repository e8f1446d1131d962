// Joins two neighbouring elements of an offset profile again: trimmed or extended to a point, or
// with an arc round the corner.
#pragma once

#include <cstdint>

#include "core/General.h"
#include "partprogram/DrawRecord.h"

namespace torvane::partprogram {

enum class ElementEnd : std::uint8_t { Start = 1, End = 2 };

/// Brings one end of a line to `point` (mm); length and angle follow.
void TrimLine(DrawRecord& record, core::Vector2 point, ElementEnd end);

/// Brings one end of an arc to the direction of `point` from its centre. Centre, radius and the
/// sense of the sweep stay, and so does the angle at the other end.
void TrimArc(DrawRecord& record, core::Vector2 point, ElementEnd end);

/// TrimArc for an Arc Profile, TrimLine for any other record.
void TrimElement(DrawRecord& record, core::Vector2 point, ElementEnd end);

/// The sweep (degrees) of a corner arc that could go either way round. `startAngle` is the arc's,
/// `sweep` 180 or -180; the arc must leave within 45 degrees of the direction in which `previous`
/// ends. Where it does not, the sweep becomes 360 less the sweep, which leaves 180 as it is.
[[nodiscard]] double HalfCircleSweep(double startAngle, double sweep, const DrawRecord& previous);

/// The arc of radius `kerfWidth` (mm) about the programmed `corner`, from the end of `previous` to
/// the start of `current`, both offset, the short way round. `feedPercent` of the feed of
/// `previous`; not above 0 it counts as 100. A width below 0, which offsets to the other side,
/// gives the radius its size.
[[nodiscard]] DrawRecord MakeCornerArc(const DrawRecord& previous, const DrawRecord& current,
                                       Point3 corner, double kerfWidth, double feedPercent);

}  // namespace torvane::partprogram
