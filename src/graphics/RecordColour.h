// In which colour a record is painted.
#pragma once

#include "core/ColourTable.h"
#include "partprogram/DrawRecord.h"

namespace torvane::graphics {

/// What a record is painted for.
enum class PaintMode {
  Erase = 0,       ///< kept as a mode, nothing uses it
  Background = 1,  ///< the plot under the trace
  RealTime = 2,    ///< kept as a mode; the trace draws by itself
  Highlight = 3,   ///< the block under the restart cursor
};

/// Code 120 or 130: the only records that leave a mark.
[[nodiscard]] constexpr bool IsCut(std::int16_t code) {
  return code == partprogram::RecordCode::LineProfile ||
         code == partprogram::RecordCode::ArcProfile;
}
[[nodiscard]] inline bool IsCut(const partprogram::DrawRecord& record) {
  return IsCut(record.Code);
}

/// The first row of the colour table that fits the record in this mode. Block skip comes before
/// kerf side and blending.
[[nodiscard]] core::ColourName RecordColour(const partprogram::DrawRecord& record, PaintMode mode);

}  // namespace torvane::graphics
