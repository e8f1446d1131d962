// Moves the elements of a compensated profile aside by the kerf width.
#pragma once

#include <cstdint>

#include "partprogram/DrawRecord.h"

namespace torvane::partprogram {

/// What an offset does to an arc's radius: +1 grow, -1 shrink, 0 none. `side` is `KerfSide`, the
/// sweep is in degrees.
[[nodiscard]] int KerfArcSign(std::int16_t side, double sweep, std::int16_t yDirection);

/// Moves a line by `kerfWidth` (mm, the whole of it) at right angles to the side of its `KerfSide`,
/// which becomes 0. A `KerfSide` of 0 leaves the record as it is.
void OffsetLine(DrawRecord& record, double kerfWidth, std::int16_t yDirection);

/// Changes an arc's radius by `kerfWidth`; centre, start angle and sweep stay. False where the arc
/// would shrink to nothing: the radius then stays.
[[nodiscard]] bool OffsetArc(DrawRecord& record, double kerfWidth, std::int16_t yDirection);

}  // namespace torvane::partprogram
